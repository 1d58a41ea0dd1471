// The modules of VBA: functions, statements that are procedures, and their objects.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbaModules = R"(
library VBA

module Strings
fun Asc(String:String):Integer AscB(String:String):Byte AscW(String:String):Integer
    Chr(CharCode:Long) ChrB(CharCode:Byte) ChrW(CharCode:Long)
    Filter(SourceArray,Match:String,[Include:Boolean],[Compare:VbCompareMethod])
    Format(Expression,[Format],[FirstDayOfWeek:VbDayOfWeek],[FirstWeekOfYear:VbFirstWeekOfYear])
    FormatCurrency(Expression,[NumDigitsAfterDecimal:Long],[IncludeLeadingDigit:VbTriState],[UseParensForNegativeNumbers:VbTriState],[GroupDigits:VbTriState]):String
    FormatDateTime(Expression,[NamedFormat:VbDateTimeFormat]):String
    FormatNumber(Expression,[NumDigitsAfterDecimal:Long],[IncludeLeadingDigit:VbTriState],[UseParensForNegativeNumbers:VbTriState],[GroupDigits:VbTriState]):String
    FormatPercent(Expression,[NumDigitsAfterDecimal:Long],[IncludeLeadingDigit:VbTriState],[UseParensForNegativeNumbers:VbTriState],[GroupDigits:VbTriState]):String
    InStr([Start],[String1],[String2],[Compare:VbCompareMethod])
    InStrB([Start],[String1],[String2],[Compare:VbCompareMethod])
    InStrRev(StringCheck:String,StringMatch:String,[Start:Long],[Compare:VbCompareMethod]):Long
    Join(SourceArray,[Delimiter]):String LCase(String) Left(String,Length:Long)
    LeftB(String,Length:Long) Len(Expression) LenB(Expression) LTrim(String)
    Mid(String,Start:Long,[Length]) MidB(String,Start:Long,[Length])
    MonthName(Month:Long,[Abbreviate:Boolean]):String
    Replace(Expression:String,Find:String,Replace:String,[Start:Long],[Count:Long],[Compare:VbCompareMethod]):String
    Right(String,Length:Long) RightB(String,Length:Long) RTrim(String) Space(Number:Long)
    Split(Expression:String,[Delimiter],[Limit:Long],[Compare:VbCompareMethod])
    StrComp(String1,String2,[Compare:VbCompareMethod])
    StrConv(String,Conversion:VbStrConv,[LocaleID:Long]) String(Number:Long,Character)
    StrReverse(Expression:String):String Trim(String) UCase(String)
    WeekdayName(Weekday:Long,[Abbreviate:Boolean],[FirstDayOfWeek:VbDayOfWeek]):String

module Conversion
fun CBool(Expression):Boolean CByte(Expression):Byte CCur(Expression):Currency
    CDate(Expression):Date CDbl(Expression):Double CDec(Expression) CInt(Expression):Integer
    CLng(Expression):Long CSng(Expression):Single CStr(Expression):String CVar(Expression)
    CVDate(Expression) CVErr(Expression) Error([ErrorNumber]) Fix(Number) Hex(Number) Int(Number)
    MacID(Constant:String):Long Oct(Number) Str(Number) Val(String:String):Double

module FileSystem
fun CurDir([Drive]) Dir([PathName],[Attributes:VbFileAttribute]) EOF(FileNumber:Integer):Boolean
    FileAttr(FileNumber:Integer,[ReturnType:Integer]):Long FileDateTime(PathName:String)
    FileLen(PathName:String):Long FreeFile([RangeNumber]):Integer
    GetAttr(PathName:String):VbFileAttribute Loc(FileNumber:Integer):Long
    LOF(FileNumber:Integer):Long Seek(FileNumber:Integer):Long
sub ChDir(Path:String) ChDrive(Drive:String) FileCopy(Source:String,Destination:String)
    Kill(PathName) MkDir(Path:String) Reset RmDir(Path:String)
    SetAttr(PathName:String,Attributes:VbFileAttribute)

module DateTime
get Now Timer:Single
let Calendar:VbCalendar Date Time
fun DateAdd(Interval:String,Number:Double,Date)
    DateDiff(Interval:String,Date1,Date2,[FirstDayOfWeek:VbDayOfWeek],[FirstWeekOfYear:VbFirstWeekOfYear])
    DatePart(Interval:String,Date,[FirstDayOfWeek:VbDayOfWeek],[FirstWeekOfYear:VbFirstWeekOfYear])
    DateSerial(Year:Integer,Month:Integer,Day:Integer) DateValue(Date:String) Day(Date) Hour(Time)
    Minute(Time) Month(Date) Second(Time) TimeSerial(Hour:Integer,Minute:Integer,Second:Integer)
    TimeValue(Time:String) Weekday(Date,[FirstDayOfWeek:VbDayOfWeek]) Year(Date)

module Information
fun Erl:Long Err:ErrObject IMEStatus:VbIMEStatus IsArray(VarName):Boolean IsDate(Expression):Boolean
    IsEmpty(Expression):Boolean IsError(Expression):Boolean IsMissing(ArgName):Boolean
    IsNull(Expression):Boolean IsNumeric(Expression):Boolean IsObject(Expression):Boolean
    QBColor(Color:Integer):Long RGB(Red:Integer,Green:Integer,Blue:Integer):Long
    TypeName(VarName):String VarType(VarName):VbVarType

module Interaction
fun CallByName(Object:Object,ProcName:String,CallType:VbCallType,*Args) Choose(Index:Single,*Choice)
    Command CreateObject(Class:String,[ServerName:String]) DoEvents:Integer Environ(Expression)
    GetAllSettings(AppName:String,Section:String) GetObject([PathName],[Class])
    GetSetting(AppName:String,Section:String,Key:String,[Default]):String
    IIf(Expression,TruePart,FalsePart)
    InputBox(Prompt,[Title],[Default],[XPos],[YPos],[HelpFile],[Context]):String
    MsgBox(Prompt,[Buttons:VbMsgBoxStyle],[Title],[HelpFile],[Context]):VbMsgBoxResult
    Partition(Number,Start,Stop,Interval) Shell(PathName,[WindowStyle:VbAppWinStyle]):Double
    Switch(*VarExpr)
sub AppActivate(Title,[Wait]) Beep DeleteSetting(AppName:String,[Section],[Key])
    SaveSetting(AppName:String,Section:String,Key:String,Setting:String)
    SendKeys(String:String,[Wait])

module Math
fun Abs(Number) Atn(Number:Double):Double Cos(Number:Double):Double Exp(Number:Double):Double
    Log(Number:Double):Double Rnd([Number]):Single Round(Number,[NumDigitsAfterDecimal:Long])
    Sgn(Number) Sin(Number:Double):Double Sqr(Number:Double):Double Tan(Number:Double):Double
sub Randomize([Number])

module Financial
fun DDB(Cost:Double,Salvage:Double,Life:Double,Period:Double,[Factor]):Double
    FV(Rate:Double,NPer:Double,Pmt:Double,[PV],[Due]):Double
    IPmt(Rate:Double,Per:Double,NPer:Double,PV:Double,[FV],[Due]):Double
    IRR(ValueArray:Double(),[Guess]):Double
    MIRR(ValueArray:Double(),FinanceRate:Double,ReinvestRate:Double):Double
    NPer(Rate:Double,Pmt:Double,PV:Double,[FV],[Due]):Double
    NPV(Rate:Double,ValueArray:Double()):Double
    Pmt(Rate:Double,NPer:Double,PV:Double,[FV],[Due]):Double
    PPmt(Rate:Double,Per:Double,NPer:Double,PV:Double,[FV],[Due]):Double
    PV(Rate:Double,NPer:Double,Pmt:Double,[FV],[Due]):Double
    Rate(NPer:Double,Pmt:Double,PV:Double,[FV],[Due],[Guess]):Double
    SLN(Cost:Double,Salvage:Double,Life:Double):Double
    SYD(Cost:Double,Salvage:Double,Life:Double,Period:Double):Double

module _HiddenModule
fun Array(*ArgList) Input(Number:Long,FileNumber:Integer) InputB(Number:Long,FileNumber:Integer)
    ObjPtr(Ptr):Long StrPtr(Ptr:String):Long VarPtr(Ptr):Long
sub Width(FileNumber:Integer,Width:Integer)

class ErrObject default Number
get LastDllError:Long
let Number:Long Source:String Description:String HelpFile:String HelpContext:Long
sub Clear Raise(Number:Long,[Source],[Description],[HelpFile],[HelpContext])

class Collection new default Item
fun Item(Index) Count:Long _NewEnum:IUnknown
sub Add(Item,[Key],[Before],[After]) Remove(Index)

module Language
get Debug:Debug
fun LBound(ArrayName,[Dimension:Long]):Long UBound(ArrayName,[Dimension:Long]):Long
    Spc(Count:Integer) Tab([Column:Integer])

class Debug
sub Print(*OutputList) Assert(BooleanExpression:Boolean)
)";

}  // namespace vendrel::builtins
