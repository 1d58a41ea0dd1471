#pragma once
// The words of which generated code is made.

namespace vendrel::bench {

inline constexpr const char* kVerbs[] = {"Get",    "Load",  "Save",  "Find",  "Check",
                                         "Update", "Show",  "Read",  "Build", "Clear",
                                         "Format", "Count", "Print", "Move"};
inline constexpr const char* kNouns[] = {
    "Account", "Invoice", "Order",  "Customer", "Stock",  "Payment", "Total",  "Address", "Balance",
    "Price",   "Row",     "Column", "Field",    "Record", "Buffer",  "Window", "Setting", "Rate"};
inline constexpr const char* kAdjectives[] = {"New",   "Last", "Current", "Old",
                                              "First", "Open", "Next",    "Total"};
inline constexpr const char* kTypes[] = {"Long",    "String", "Integer", "Boolean", "Currency",
                                         "Variant", "Date",   "Double",  "Object",  "Collection"};
inline constexpr const char* kValueTypes[] = {"Long", "String", "Integer", "Boolean", "Currency"};
inline constexpr const char* kWords[] = {"the",  "amount", "of",    "each",  "line",  "is",
                                         "kept", "until",  "order", "found", "price", "with",
                                         "no",   "date",   "first", "only",  "when",  "total",
                                         "is",   "below",  "limit", "then",  "close", "it"};
// In windows-1252.
inline constexpr const char* kForeignWords[] = {
    "Gr\xF6\xDF"
    "e",
    "a\xF1o", "d\xE9j\xE0",
    "\xA3"
    "12",
    "na\xEFve"};

struct ControlKind {
  const char* type;
  const char* prefix;
};
inline constexpr ControlKind kControls[] = {{"TextBox", "txt"},       {"Label", "lbl"},
                                            {"CommandButton", "cmd"}, {"ComboBox", "cbo"},
                                            {"CheckBox", "chk"},      {"ListBox", "lst"}};
inline constexpr const char* kEvents[] = {"Click", "Change", "GotFocus", "LostFocus", "Validate"};

}  // namespace vendrel::bench
