// The standard controls of VB, but those that hold lists.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbControls = R"(
library VB

class VBControlExtender
let Name:String object:Object Parent:Object CausesValidation:Boolean Container:Object
    DragIcon:IPictureDisp DragMode:Integer Height:Single HelpContextID:Long Index:Integer
    Left:Single TabIndex:Integer TabStop:Boolean Tag:String ToolTipText:String Top:Single
    Visible:Boolean WhatsThisHelpID:Long Width:Single DataBindings:Object DataChanged:Boolean
    DataField:String DataMember:String DataFormat:Object DataSource:Object Align:Integer
    Cancel:Boolean Default:Boolean Enabled:Boolean
sub Drag([Action]) Move(Left:Single,[Top],[Width],[Height]) SetFocus ShowWhatsThis
    ZOrder([Position])
event DragDrop(Source:Control,X:Single,Y:Single)
    DragOver(Source:Control,X:Single,Y:Single,State:Integer) GotFocus LostFocus
    ObjectEvent(Info:EventInfo) Validate(&Cancel:Boolean)

class Control
get Name:String

control CheckBox default Value with Font Placed Dragged Mouse Pointer Keys Window Validated Hinted
    Dropped Bound
get Style:Integer
let Alignment:Integer Appearance:Integer BackColor:Long Caption:String DisabledPicture:IPictureDisp
    DownPicture:IPictureDisp Enabled:Boolean ForeColor:Long MaskColor:Long Picture:IPictureDisp
    RightToLeft:Boolean UseMaskColor:Boolean Value:Integer HelpContextID:Long
sub Refresh
event Click

control CommandButton default Value with Font Placed Dragged Mouse Pointer Keys Window Hinted
    Dropped
get Style:Integer
let Appearance:Integer BackColor:Long Cancel:Boolean Caption:String Default:Boolean
    DisabledPicture:IPictureDisp DownPicture:IPictureDisp Enabled:Boolean MaskColor:Long
    Picture:IPictureDisp RightToLeft:Boolean UseMaskColor:Boolean Value:Boolean HelpContextID:Long
    CausesValidation:Boolean
sub Refresh
event Click

control Data default Caption with Font Placed Dragged Mouse Pointer Hinted Dropped
get Database:Object EditMode:Integer
let Align:Integer Appearance:Integer BackColor:Long BOFAction:Integer Caption:String Connect:String
    DatabaseName:String DefaultCursorType:Integer DefaultType:Integer Enabled:Boolean
    EOFAction:Integer Exclusive:Boolean ForeColor:Long Options:Integer ReadOnly:Boolean
    Recordset:Object RecordsetType:Integer RecordSource:String RightToLeft:Boolean
sub Refresh UpdateControls UpdateRecord
event Error(DataErr:Integer,&Response:Integer) Reposition Resize
    Validate(&Action:Integer,&Save:Integer)

control Frame default Caption with Font Placed Dragged Mouse Pointer Hinted Dropped
get hWnd:Long
let Appearance:Integer BackColor:Long BorderStyle:Integer Caption:String ClipControls:Boolean
    Enabled:Boolean ForeColor:Long HelpContextID:Long RightToLeft:Boolean TabIndex:Integer
sub Refresh
event Click DblClick

control HScrollBar default Value with Placed Dragged Pointer Keys Window Validated
let Enabled:Boolean HelpContextID:Long LargeChange:Integer Max:Integer Min:Integer
    RightToLeft:Boolean SmallChange:Integer Value:Integer WhatsThisHelpID:Long
sub Refresh ShowWhatsThis
event Change Scroll

control VScrollBar default Value with Placed Dragged Pointer Keys Window Validated
let Enabled:Boolean HelpContextID:Long LargeChange:Integer Max:Integer Min:Integer
    RightToLeft:Boolean SmallChange:Integer Value:Integer WhatsThisHelpID:Long
sub Refresh ShowWhatsThis
event Change Scroll

control Image default Picture with Placed Dragged Mouse Pointer Hinted Dropped DraggedOut Bound
let Appearance:Integer BorderStyle:Integer Enabled:Boolean Stretch:Boolean Picture:IPictureDisp
sub Refresh
event Click DblClick

control Label default Caption with Font Placed Dragged Mouse Pointer Hinted Dropped Bound Linked
let Alignment:Integer Appearance:Integer AutoSize:Boolean BackColor:Long BackStyle:Integer
    BorderStyle:Integer Caption:String Enabled:Boolean ForeColor:Long RightToLeft:Boolean
    TabIndex:Integer UseMnemonic:Boolean WordWrap:Boolean
sub Refresh
event Change Click DblClick

control Line default Visible
get Index:Integer Name:String Parent:Form
let BorderColor:Long BorderStyle:Integer BorderWidth:Integer Container:Object DrawMode:Integer
    Tag:String Visible:Boolean X1:Single X2:Single Y1:Single Y2:Single
sub Refresh ZOrder([Position])

control Menu default Enabled
get Index:Integer Name:String Parent:Form WindowList:Boolean
let Caption:String Checked:Boolean Enabled:Boolean HelpContextID:Long Tag:String Visible:Boolean
event Click

control OLE with Placed Dragged Mouse Pointer Keys Window Validated
get object:Object LpOleObject:Long ObjectAcceptFormats(Index:Integer):String
    ObjectAcceptFormatsCount:Integer ObjectGetFormats(Index:Integer):String
    ObjectGetFormatsCount:Integer ObjectVerbFlags(Index:Integer):Long
    ObjectVerbs(Index:Integer):String ObjectVerbsCount:Integer OLEType:Integer PasteOK:Boolean
    Picture:IPictureDisp
let DataChanged:Boolean DataField:String AppIsRunning:Boolean Data:Long DataText:String
    FileNumber:Integer Appearance:Integer AutoActivate:Integer AutoVerbMenu:Boolean BackColor:Long
    BackStyle:Integer BorderStyle:Integer Class:String DisplayType:Integer Enabled:Boolean
    Format:String HelpContextID:Long HostName:String MiscFlags:Integer OLEDropAllowed:Boolean
    OLETypeAllowed:Integer SizeMode:Integer SourceDoc:String SourceItem:String UpdateOptions:Integer
    Verb:Integer WhatsThisHelpID:Long
put Action:Integer
sub Close Copy CreateEmbed(SourceDoc:String,[Class]) CreateLink(SourceDoc:String,[SourceItem])
    Delete DoVerb([Verb]) FetchVerbs InsertObjDlg Paste PasteSpecialDlg
    ReadFromFile(FileNum:Integer) Refresh SaveToFile(FileNum:Integer)
    SaveToOle1File(FileNum:Integer) ShowWhatsThis Update
event Click DblClick ObjectMove(Left:Single,Top:Single,Width:Single,Height:Single)
    Resize(HeightNew:Single,WidthNew:Single) Updated(Code:Integer)

control OptionButton default Value with Font Placed Dragged Mouse Pointer Keys Window Validated
    Hinted Dropped
get Style:Integer
let Alignment:Integer Appearance:Integer BackColor:Long Caption:String DisabledPicture:IPictureDisp
    DownPicture:IPictureDisp Enabled:Boolean ForeColor:Long MaskColor:Long Picture:IPictureDisp
    RightToLeft:Boolean UseMaskColor:Boolean Value:Boolean HelpContextID:Long
sub Refresh
event Click DblClick

control PictureBox default Picture with Canvas Placed Dragged Mouse Pointer Keys Window Validated
    Hinted Dropped DraggedOut Bound Linked
let Align:Integer Appearance:Integer AutoSize:Boolean BackColor:Long BorderStyle:Integer
    Enabled:Boolean RightToLeft:Boolean HelpContextID:Long
sub Refresh
event Change Click DblClick Resize

control Shape default Shape
get Index:Integer Name:String Parent:Form
let BackColor:Long BackStyle:Integer BorderColor:Long BorderStyle:Integer BorderWidth:Integer
    Container:Object DrawMode:Integer FillColor:Long FillStyle:Integer Height:Single Left:Single
    Shape:Integer Tag:String Top:Single Visible:Boolean Width:Single
sub Move(Left:Single,[Top],[Width],[Height]) Refresh ZOrder([Position])

control TextBox default Text with Font Placed Dragged Mouse Pointer Keys Window Validated Hinted
    Dropped DraggedOut Bound Linked
get HideSelection:Boolean MultiLine:Boolean ScrollBars:Integer
let Alignment:Integer Appearance:Integer BackColor:Long BorderStyle:Integer Enabled:Boolean
    ForeColor:Long Locked:Boolean MaxLength:Long PasswordChar:String RightToLeft:Boolean
    SelLength:Long SelStart:Long SelText:String Text:String HelpContextID:Long
sub Refresh
event Change Click DblClick

control Timer default Enabled
get Index:Integer Name:String Parent:Form
let Enabled:Boolean Interval:Long Tag:String
event Timer
)";

const std::string_view kVbListControls = R"(
library VB

part ListBase with Font Placed Dragged Pointer Keys Window Validated Hinted Dropped
let Appearance:Integer BackColor:Long HelpContextID:Long Enabled:Boolean ForeColor:Long
    ListIndex:Integer TopIndex:Integer
sub Refresh

part Listed with ListBase Bound DraggedOut Clicked
get IntegralHeight:Boolean Sorted:Boolean Style:Integer ListCount:Integer NewIndex:Integer
let ItemData(Index:Integer):Long List(Index:Integer):String RightToLeft:Boolean Text:String
sub AddItem(Item:String,[Index]) Clear RemoveItem(Index:Integer)
event DblClick Scroll

control ComboBox default Text with Listed
let Locked:Boolean SelLength:Long SelStart:Long SelText:String
event Change DropDown

control ListBox default Text with Listed Mouse
get MultiSelect:Integer SelCount:Integer
let Columns:Integer Selected(Index:Integer):Boolean
event ItemCheck(Item:Integer)

control DirListBox default Path with ListBase DraggedOut Mouse Clicked
get List(Index:Integer):String ListCount:Integer
let Path:String
event Change Scroll

control DriveListBox default Drive with ListBase
get List(Index:Integer):String ListCount:Integer
let Drive:String
event Change Scroll

control FileListBox default FileName with ListBase DraggedOut Mouse Clicked
get MultiSelect:Integer List(Index:Integer):String ListCount:Integer
let Archive:Boolean FileName:String Hidden:Boolean Normal:Boolean Path:String Pattern:String
    ReadOnly:Boolean Selected(Index:Integer):Boolean System:Boolean
event DblClick PathChange PatternChange Scroll
)";

}  // namespace vendrel::builtins
