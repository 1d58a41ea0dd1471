#pragma once
// What is asked of a source control service. A host registers a database of its own, under
// `VSSDatabase::kProgID`; the one below answers from a tree of folders.

#include <memory>
#include <string>
#include <string_view>

#include "model/Fwd.h"

namespace vendrel {

/// One project or file of a source control database.
class VSSItem {
 public:
  virtual ~VSSItem() = default;
  /// Its last name.
  virtual std::string Name() const = 0;
  /// Its path in the database: "$/Ledger/Account.cls".
  virtual std::string Path() const = 0;
  /// Whether it holds other items.
  virtual bool IsProject() const = 0;
  /// Makes the working copy at a path writable, and the item the caller's. Raises what the service
  /// raises; 75 where it only reads.
  virtual void Checkout(std::string_view comment, std::string_view localPath) = 0;
};

/// A source control database.
class VSSDatabase {
 public:
  virtual ~VSSDatabase() = default;
  /// Opens the database of that "srcsafe.ini". Raises 53 where there is none.
  virtual void Open(std::string_view iniPath, std::string_view user, std::string_view password) = 0;
  /// The item of a path in the database. Raises 53 where there is none, 91 before `Open`.
  virtual std::shared_ptr<VSSItem> Item(std::string_view projectPath) = 0;

  static constexpr std::string_view kProgID = "VendrelSourceControl.Database";
};

/// A database that only reads: "$/" is the folder in which its "srcsafe.ini" stands. User and
/// password are not asked for.
class FolderDatabase final : public VSSDatabase {
 public:
  void Open(std::string_view iniPath, std::string_view user, std::string_view password) override;
  std::shared_ptr<VSSItem> Item(std::string_view projectPath) override;

 private:
  std::string mFolder;
};

}  // namespace vendrel
