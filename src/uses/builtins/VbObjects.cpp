// The objects of VB that stand alone: application, screen, printer, clipboard and their kin.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbaConstants = R"(
enum VbMsgBoxResult vbOK=1 vbCancel=2 vbAbort=3 vbRetry=4 vbIgnore=5 vbYes=6 vbNo=7
module Constants
const vbCrLf:String vbCr:String vbLf:String vbTab:String vbNullChar:String vbNullString:String
)";
const std::string_view kVbRunConstants = R"(library VBRUN)";
const std::string_view kVbRunObjects = R"(library VBRUN)";
const std::string_view kVbObjects = R"(library VB)";
const std::string_view kVbDesigners = R"(library VB)";
const std::string_view kVbControls = R"(library VB
class VBControlExtender
let Left:Single Top:Single Width:Single Height:Single Tag:String Visible:Boolean
control TextBox default Text
let Text:String BackColor:OLE_COLOR
event Change KeyPress(&KeyAscii:Integer)
)";
const std::string_view kVbListControls = R"(library VB)";
const std::string_view kStdOle = R"(library stdole
alias OLE_COLOR:Long
)";

}  // namespace vendrel::builtins
