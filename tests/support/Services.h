#pragma once
// What a host may put in the place of the machine: each is in force while it lives.

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "core/MessageService.h"
#include "services/ProcessRunner.h"
#include "services/SettingsReader.h"

namespace vendrel::test {

/// Keeps what is shown and asked, and answers every question alike.
class NotedMessages final : public MessageService {
 public:
  explicit NotedMessages(bool answer = false) : mAnswer(answer) {
    Install({std::shared_ptr<void>(), this});
  }
  ~NotedMessages() override { Install(nullptr); }
  void Show(std::string_view text, std::string_view caption, int style) override {
    Shown.push_back(std::to_string(style) + " " + std::string(caption) + ": " + std::string(text));
  }
  bool Ask(std::string_view text, std::string_view caption, int style) override {
    Show(text, caption, style);
    return mAnswer;
  }
  /// "style caption: text" of each box.
  std::vector<std::string> Shown;

 private:
  bool mAnswer;
};

/// Starts nothing and keeps what would have run.
class NotedRuns final : public ProcessRunner {
 public:
  NotedRuns() { Install({std::shared_ptr<void>(), this}); }
  ~NotedRuns() override { Install(nullptr); }
  int Run(const std::vector<std::string>& arguments, const ProcessOptions& options) override {
    Arguments.push_back(arguments);
    Waited = options.Wait;
    if (OnRun) OnRun();
    return ExitCode;
  }
  std::vector<std::vector<std::string>> Arguments;
  bool Waited = false;
  int ExitCode = 0;
  std::function<void()> OnRun;
};

/// A registry of one value.
class OneSetting final : public SettingsReader {
 public:
  OneSetting(HiveEnum hive, std::string key, std::string name, std::string value)
      : mHive(hive), mKey(std::move(key)), mName(std::move(name)), mValue(std::move(value)) {
    Install({std::shared_ptr<void>(), this});
  }
  ~OneSetting() override { Install(nullptr); }
  std::string ReadValue(HiveEnum hive, std::string_view key, std::string_view name) override {
    return hive == mHive && key == mKey && name == mName ? mValue : std::string();
  }

 private:
  HiveEnum mHive;
  std::string mKey, mName, mValue;
};

}  // namespace vendrel::test
