#pragma once
// Message boxes. The library has no window: a host that wants boxes registers a service. Without
// one, nothing is shown and a question counts as No.

#include <memory>
#include <string>
#include <string_view>

namespace vendrel {

/// Icon and buttons of a box, as one number in the manner of the host platform: buttons (0 OK,
/// 4 Yes and No, 6 retry set), plus icon (16 stop, 32 question, 48 exclamation, 64 information).
enum MessageStyle : int {
  msOKOnly = 0,
  msYesNo = 4,
  msExclamation = 48,
  msQuestion = 32,
  msYesNoQuestion = 36,
  msProceedQuestion = 38,
};

/// Shows boxes and asks questions, while `Silent` is false (some texts show even then).
class MessageService {
 public:
  virtual ~MessageService() = default;
  /// A text with an OK button.
  virtual void Show(std::string_view text, std::string_view caption, int style) = 0;
  /// A question; true for Yes (or OK).
  virtual bool Ask(std::string_view text, std::string_view caption, int style) = 0;

  /// The service in force in the workspace in use; never null.
  static MessageService& Current();
  /// Puts a service in force; an empty pointer restores the one that shows nothing.
  static void Install(std::shared_ptr<MessageService> service);
};

}  // namespace vendrel
