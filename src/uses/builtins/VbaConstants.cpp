// The enumerations and constants of VBA.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbaConstants = R"(
library VBA

module Constants
const vbObjectError=-2147221504 vbNullString:String vbNullChar:String vbCrLf:String vbNewLine:String
    vbCr:String vbLf:String vbBack:String vbFormFeed:String vbTab:String vbVerticalTab:String

enum VbVarType vbEmpty=0 vbNull=1 vbInteger=2 vbLong=3 vbSingle=4 vbDouble=5 vbCurrency=6 vbDate=7
    vbString=8 vbObject=9 vbError=10 vbBoolean=11 vbVariant=12 vbDataObject=13 vbDecimal=14
    vbByte=17 vbUserDefinedType=36 vbArray=8192
enum VbMsgBoxStyle vbOKOnly=0 vbOKCancel=1 vbAbortRetryIgnore=2 vbYesNoCancel=3 vbYesNo=4
    vbRetryCancel=5 vbCritical=16 vbQuestion=32 vbExclamation=48 vbInformation=64 vbDefaultButton1=0
    vbDefaultButton2=256 vbDefaultButton3=512 vbDefaultButton4=768 vbApplicationModal=0
    vbSystemModal=4096 vbMsgBoxHelpButton=16384 vbMsgBoxRight=524288 vbMsgBoxRtlReading=1048576
    vbMsgBoxSetForeground=65536
enum VbMsgBoxResult vbOK=1 vbCancel=2 vbAbort=3 vbRetry=4 vbIgnore=5 vbYes=6 vbNo=7
enum VbFileAttribute vbNormal=0 vbReadOnly=1 vbHidden=2 vbSystem=4 vbVolume=8 vbDirectory=16
    vbArchive=32 vbAlias=64
enum VbStrConv vbUpperCase=1 vbLowerCase=2 vbProperCase=3 vbWide=4 vbNarrow=8 vbKatakana=16
    vbHiragana=32 vbUnicode=64 vbFromUnicode=128
enum VbDayOfWeek vbUseSystemDayOfWeek=0 vbSunday=1 vbMonday=2 vbTuesday=3 vbWednesday=4 vbThursday=5
    vbFriday=6 vbSaturday=7
enum VbFirstWeekOfYear vbUseSystem=0 vbFirstJan1=1 vbFirstFourDays=2 vbFirstFullWeek=3
enum VbIMEStatus vbIMENoOp=0 vbIMEModeNoControl=0 vbIMEOn=1 vbIMEModeOn=1 vbIMEOff=2 vbIMEModeOff=2
    vbIMEDisable=3 vbIMEModeDisable=3 vbIMEHiragana=4 vbIMEModeHiragana=4 vbIMEKatakanaDbl=5
    vbIMEModeKatakana=5 vbIMEKatakanaSng=6 vbIMEModeKatakanaHalf=6 vbIMEAlphaDbl=7
    vbIMEModeAlphaFull=7 vbIMEAlphaSng=8 vbIMEModeAlpha=8 vbIMEModeHangulFull=9 vbIMEModeHangul=10
enum VbAppWinStyle vbHide=0 vbNormalFocus=1 vbMinimizedFocus=2 vbMaximizedFocus=3 vbNormalNoFocus=4
    vbMinimizedNoFocus=6
enum VbCompareMethod vbBinaryCompare=0 vbTextCompare=1 vbDatabaseCompare=2
enum VbCalendar vbCalGreg=0 vbCalHijri=1
enum VbDateTimeFormat vbGeneralDate=0 vbLongDate=1 vbShortDate=2 vbLongTime=3 vbShortTime=4
enum VbTriState vbUseDefault=-2 vbTrue=-1 vbFalse=0
enum VbCallType VbMethod=1 VbGet=2 VbLet=4 VbSet=8
)";

}  // namespace vendrel::builtins
