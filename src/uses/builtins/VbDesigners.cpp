// Forms, and what else a designer of VB makes: the bases of modules that have a designer.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbDesigners = R"(
library VB

part Designer with Canvas Pointer Mouse Keys Clicked Dropped
get Controls:Controls Count:Integer Name:String hWnd:Long
let Appearance:Integer BackColor:Long PaletteMode:Integer Palette:IPictureDisp KeyPreview:Boolean
    Tag:String
sub PopupMenu(Menu:Object,[Flags],[X],[Y],[DefaultMenu])
event DblClick DragDrop(Source:Control,X:Single,Y:Single) GotFocus Initialize LostFocus Terminate
    DragOver(Source:Control,X:Single,Y:Single,State:Integer)

part Resized
event Resize

part Unloaded
event Activate Deactivate Load QueryUnload(&Cancel:Integer,UnloadMode:Integer)
    Unload(&Cancel:Integer) LinkExecute(CmdStr:String,&Cancel:Integer)

part Hosted
sub AsyncRead(Target:String,AsyncType:Long,[PropertyName],[AsyncReadOptions])
    CancelAsyncRead([Property]) PropertyChanged([PropertyName])
event AsyncReadComplete(AsyncProp:AsyncProperty) AsyncReadProgress(AsyncProp:AsyncProperty)
    EnterFocus ExitFocus Hide InitProperties ReadProperties(PropBag:PropertyBag) Show
    WriteProperties(PropBag:PropertyBag)

class Form default Controls with Designer Unloaded LinkEvents Resized
get MaxButton:Boolean MinButton:Boolean ControlBox:Boolean MDIChild:Boolean ActiveControl:Control
    WhatsThisButton:Boolean WhatsThisHelp:Boolean ShowInTaskbar:Boolean StartUpPosition:Integer
    Moveable:Boolean
let BorderStyle:Integer Caption:String Enabled:Boolean Height:Single HelpContextID:Long
    Icon:IPictureDisp Left:Single LinkMode:Integer LinkTopic:String RightToLeft:Boolean Top:Single
    Visible:Boolean Width:Single WindowState:Integer
sub Hide Move(Left:Single,[Top],[Width],[Height]) PrintForm Refresh SetFocus
    Show([Modal],[OwnerForm]) ValidateControls WhatsThisMode ZOrder([Position])

class MDIForm default Controls with Unloaded LinkEvents Pointer Mouse Clicked Dropped
get ActiveControl:Control ActiveForm:Object Controls:Controls Count:Integer Name:String hWnd:Long
    Moveable:Boolean ScaleHeight:Single ScaleWidth:Single ScrollBars:Boolean StartUpPosition:Integer
    WhatsThisHelp:Boolean
let Appearance:Integer AutoShowChildren:Boolean BackColor:Long Caption:String Enabled:Boolean
    Height:Single HelpContextID:Long Icon:IPictureDisp Left:Single LinkMode:Integer LinkTopic:String
    Picture:IPictureDisp RightToLeft:Boolean Tag:String Top:Single Visible:Boolean Width:Single
    WindowState:Integer
sub Arrange(Arrangement:Integer) Hide Move(Left:Single,[Top],[Width],[Height])
    PopupMenu(Menu:Object,[Flags],[X],[Y],[DefaultMenu]) SetFocus Show([Modal],[OwnerForm])
    ValidateControls WhatsThisMode ZOrder([Position])
event DblClick DragDrop(Source:Control,X:Single,Y:Single) Initialize Resize Terminate
    DragOver(Source:Control,X:Single,Y:Single,State:Integer)

class UserControl default Controls with Designer Hosted Resized
get ActiveControl:Control Ambient:AmbientProperties ContainedControls:ContainedControls
    DataMembers:DataMembers HyperLink:Hyperlink ParentControls:ParentControls ContainerHwnd:Long
    EventsFrozen:Boolean Extender:Object Parent:Object
let PropertyPages(Index:Integer):String AccessKeys:String BackStyle:Integer BorderStyle:Integer
    ClipBehavior:Integer Enabled:Boolean Height:Single HitBehavior:Integer MaskColor:Long
    MaskPicture:IPictureDisp RightToLeft:Boolean Width:Single
fun CanPropertyChange(PropertyName:String):Boolean
sub DataMemberChanged(DataMember:String) Refresh SetFocus Size(Width:Single,Height:Single)
    ValidateControls
event AccessKeyPress(KeyAscii:Integer) AmbientChanged(PropertyName:String)
    HitTest(X:Single,Y:Single,&HitResult:Integer) GetDataMember(DataMember:String,&Data:Object)

class PropertyPage default Controls with Designer
get ActiveControl:Control Height:Single SelectedControls:SelectedControls Width:Single
let Caption:String Changed:Boolean HelpContextID:Long RightToLeft:Boolean
sub Refresh SetFocus ValidateControls
event ApplyChanges EditProperty(PropertyName:String) SelectionChanged

class UserDocument default Controls with Designer Hosted Resized
get ActiveControl:Control HyperLink:Hyperlink Parent:Object ViewportHeight:Single
    ViewportWidth:Single
let MinHeight:Single MinWidth:Single ViewportLeft:Single ViewportTop:Single ContinuousScroll:Boolean
    Height:Single HScrollSmallChange:Single RightToLeft:Boolean ScrollBars:Integer
    VScrollSmallChange:Single Width:Single
sub PrintForm Refresh SetFocus SetViewport(Left:Single,Top:Single) ValidateControls
event Scroll

class Class
event Initialize InitProperties ReadProperties(PropBag:PropertyBag) Terminate
    WriteProperties(PropBag:PropertyBag)
)";

}  // namespace vendrel::builtins
