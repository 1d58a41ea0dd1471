// The objects of VB that stand alone: what is global, application, screen, printer, clipboard. And
// the parts that designers and controls share.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbObjects = R"(
library VB

class Global global
get App:App Clipboard:Clipboard Forms:Forms Licenses:Licenses Printers:Printers Screen:Screen
let Printer:Printer
fun LoadPicture([FileName],[Size],[ColorDepth],[X],[Y]):IPictureDisp LoadResData(id,type)
    LoadResPicture(id,restype:Integer):IPictureDisp LoadResString(id:Long):String
sub Load(object:Object) SavePicture(Picture:IPictureDisp,FileName:String) Unload(object:Object)

class App
get Comments:String CompanyName:String EXEName:String FileDescription:String hInstance:Long
    LegalCopyright:String LegalTrademarks:String LogMode:Long LogPath:String Major:Integer
    Minor:Integer NonModalAllowed:Boolean Path:String PrevInstance:Boolean ProductName:String
    RetainedProject:Boolean Revision:Integer StartMode:Integer ThreadID:Long UnattendedApp:Boolean
let HelpFile:String OleRequestPendingMsgText:String OleRequestPendingMsgTitle:String
    OleRequestPendingTimeout:Long OleServerBusyMsgText:String OleServerBusyMsgTitle:String
    OleServerBusyRaiseError:Boolean OleServerBusyTimeout:Long TaskVisible:Boolean Title:String
sub LogEvent(LogBuffer:String,[EventType]) StartLogging(LogTarget:String,LogModes:Long)

class Screen
get ActiveControl:Control ActiveForm:Form FontCount:Integer Fonts(Index:Integer):String
    Height:Single TwipsPerPixelX:Single TwipsPerPixelY:Single Width:Single
let MouseIcon:IPictureDisp MousePointer:Integer

class Clipboard
fun GetData([Format]):IPictureDisp GetFormat(Format:Integer):Boolean GetText([Format]):String
sub Clear SetData(Picture:IPictureDisp,[Format]) SetText(Str:String,[Format])

class Forms default Item
get Count:Integer Item(Index):Form
fun _NewEnum:IUnknown

class Printers default Item
get Count:Integer Item(Index:Integer):Printer
fun _NewEnum:IUnknown

class Controls default Item
get Count:Long Item(Index):Control
fun _NewEnum:IUnknown Add(ProgID:String,Name:String,[Container]):Control
sub Remove(Name:String)

part Font
let Font:IFontDisp FontBold:Boolean FontItalic:Boolean FontName:String FontSize:Single
    FontStrikethru:Boolean FontUnderline:Boolean

part Scaled
let ScaleHeight:Single ScaleLeft:Single ScaleMode:Integer ScaleTop:Single ScaleWidth:Single
fun ScaleX(Width:Single,[FromScale],[ToScale]):Single
    ScaleY(Height:Single,[FromScale],[ToScale]):Single

part Drawn with Font Scaled
get hDC:Long
let CurrentX:Single CurrentY:Single DrawMode:Integer DrawStyle:Integer DrawWidth:Integer
    FillColor:Long FillStyle:Integer FontTransparent:Boolean ForeColor:Long
fun TextHeight(Str:String):Single TextWidth(Str:String):Single
sub Circle(Step:Integer,X:Single,Y:Single,Radius:Single,[Color:Long],[Start:Single],[End:Single],[Aspect:Single])
    Line(Flags:Integer,X1:Single,Y1:Single,X2:Single,Y2:Single,[Color:Long])
    PaintPicture(Picture:IPictureDisp,X1:Single,Y1:Single,[Width1],[Height1],[X2],[Y2],[Width2],[Height2],[Opcode])
    Print(*OutputList) PSet(Step:Integer,X:Single,Y:Single,[Color:Long])
    Scale([Flags:Integer],[X1],[Y1],[X2],[Y2])

part Canvas with Drawn
get Image:IPictureDisp HasDC:Boolean
let AutoRedraw:Boolean ClipControls:Boolean Picture:IPictureDisp
fun Point(X:Single,Y:Single):Long
sub Cls
event Paint

part Placed
get Name:String Index:Integer Parent:Form
let Left:Single Top:Single Width:Single Height:Single Visible:Boolean Tag:String Container:Object
sub Move(Left:Single,[Top],[Width],[Height]) ZOrder([Position])

part Clicked
event Click

part Dragged
let DragIcon:IPictureDisp DragMode:Integer
sub Drag([Action])
event DragDrop(Source:Control,X:Single,Y:Single)
    DragOver(Source:Control,X:Single,Y:Single,State:Integer)

part Mouse
event MouseDown(Button:Integer,Shift:Integer,X:Single,Y:Single)
    MouseMove(Button:Integer,Shift:Integer,X:Single,Y:Single)
    MouseUp(Button:Integer,Shift:Integer,X:Single,Y:Single)

part Pointer
let MouseIcon:IPictureDisp MousePointer:Integer

part Keys
event KeyDown(&KeyCode:Integer,Shift:Integer) KeyPress(&KeyAscii:Integer)
    KeyUp(&KeyCode:Integer,Shift:Integer)

part Focused
let TabIndex:Integer
sub SetFocus
event GotFocus LostFocus

part Window with Focused
get hWnd:Long
let TabStop:Boolean

part Validated
let CausesValidation:Boolean
event Validate(&Cancel:Boolean)

part Helped
let WhatsThisHelpID:Long
sub ShowWhatsThis

part Hinted with Helped
let ToolTipText:String

part Dropped
let OLEDropMode:Integer
sub OLEDrag
event OLECompleteDrag(&Effect:Long)
    OLEDragDrop(Data:DataObject,&Effect:Long,Button:Integer,Shift:Integer,X:Single,Y:Single)
    OLEDragOver(Data:DataObject,&Effect:Long,Button:Integer,Shift:Integer,X:Single,Y:Single,State:Integer)
    OLEGiveFeedback(&Effect:Long,&DefaultCursors:Boolean)
    OLESetData(Data:DataObject,DataFormat:Integer)
    OLEStartDrag(Data:DataObject,&AllowedEffects:Long)

part DraggedOut
let OLEDragMode:Integer

part Bound
let DataChanged:Boolean DataField:String DataFormat:Object DataMember:String DataSource:Object

part LinkEvents
event LinkClose LinkError(LinkErr:Integer) LinkOpen(&Cancel:Integer)

part Linked with LinkEvents
let LinkItem:String LinkMode:Integer LinkTimeout:Integer LinkTopic:String
sub LinkExecute(Command:String) LinkPoke LinkRequest LinkSend
event LinkNotify

class Printer with Drawn
get DeviceName:String DriverName:String FontCount:Integer Fonts(Index:Integer):String Page:Integer
    Port:String TwipsPerPixelX:Single TwipsPerPixelY:Single
let ColorMode:Integer Copies:Integer Duplex:Integer Height:Long Orientation:Integer PaperBin:Integer
    PaperSize:Integer PrintQuality:Integer RightToLeft:Boolean TrackDefault:Boolean Width:Long
    Zoom:Long
sub EndDoc KillDoc NewPage
)";

}  // namespace vendrel::builtins
