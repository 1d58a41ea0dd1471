// The objects of VBRUN, which designers and controls hand out.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbRunObjects = R"(
library VBRUN

class PropertyBag new
let Contents
fun ReadProperty(Name:String,[DefaultValue])
sub WriteProperty(Name:String,Value,[DefaultValue])

class DataObjectFiles default Item
get Item(Index:Long):String Count:Long
fun _NewEnum:IUnknown
sub Add(Filename:String,[Index]) Clear Remove(Index)

class DataObject
get Files:DataObjectFiles
fun GetData(Format:Integer) GetFormat(Format:Integer):Boolean
sub Clear SetData([Value],[Format])

class AmbientProperties
get BackColor:OLE_COLOR DisplayAsDefault:Boolean DisplayName:String Font:Font ForeColor:OLE_COLOR
    LocaleID:Long MessageReflect:Boolean Palette:Picture RightToLeft:Boolean ScaleUnits:String
    ShowGrabHandles:Boolean ShowHatching:Boolean SupportsMnemonics:Boolean TextAlign:Integer
    UIDead:Boolean UserMode:Boolean

class SelectedControls default Item
get Item(Index):Object Count:Long
fun _NewEnum:IUnknown

class ParentControls default Item
get Item(Index):Object Count:Long
let ParentControlsType:ParentControlsType
fun _NewEnum:IUnknown

class ContainedControls default Item
get Item(Index):Object Count:Long
fun _NewEnum:IUnknown

class DataBindings default Item
get Item(Index):DataBinding Count:Long
fun _NewEnum:IUnknown

class DataBinding
get IsBindable:Boolean IsDataSource:Boolean PropertyName:String
let DataChanged:Boolean DataField:String DataFormat:IUnknown DataMember:String DataSource:Object
    DataSourceName:String

class EventParameter default Value
get Name:String
let Value

class EventParameters default Item
get Item(Index):EventParameter Count:Long
fun _NewEnum:IUnknown

class EventInfo
get Name:String EventParameters:EventParameters

class Hyperlink
sub NavigateTo(Target:String,[Location:String],[FrameName:String]) GoBack GoForward

class AsyncProperty
get AsyncType:AsyncTypeConstants BytesMax:Long BytesRead:Long PropertyName:String Status:String
    StatusCode:AsyncStatusCodeConstants Target:String Value

class DataMembers default Item
get Item(Index:Long):String Count:Long
fun _NewEnum:IUnknown
sub Add(DataMember:String) Clear Remove(Index)

class LicenseInfo
get ProgId:String LicenseKey:String

class Licenses default Item
get Item(Index):LicenseInfo Count:Long
fun Add(ProgId:String,[LicenseKey]):String _NewEnum:IUnknown
sub Clear Remove(Index)
)";

const std::string_view kStdOle = R"(
library stdole

alias OLE_COLOR:Long
alias OLE_XPOS_PIXELS:Long
alias OLE_YPOS_PIXELS:Long
alias OLE_XSIZE_PIXELS:Long
alias OLE_YSIZE_PIXELS:Long
alias OLE_XPOS_HIMETRIC:Long
alias OLE_YPOS_HIMETRIC:Long
alias OLE_XSIZE_HIMETRIC:Long
alias OLE_YSIZE_HIMETRIC:Long
alias OLE_XPOS_CONTAINER:Single
alias OLE_YPOS_CONTAINER:Single
alias OLE_XSIZE_CONTAINER:Single
alias OLE_YSIZE_CONTAINER:Single
alias OLE_HANDLE:Long
alias OLE_OPTEXCLUSIVE:Boolean
alias OLE_CANCELBOOL:Boolean
alias OLE_ENABLEDEFAULTBOOL:Boolean
alias FONTNAME:String
alias FONTSIZE:Currency
alias FONTBOLD:Boolean
alias FONTITALIC:Boolean
alias FONTUNDERSCORE:Boolean
alias FONTSTRIKETHROUGH:Boolean
alias IFontDisp:Font
alias IPictureDisp:Picture
alias IFontEventsDisp:FontEvents

enum OLE_TRISTATE Unchecked=0 Checked=1 Gray=2
enum LoadPictureConstants Default=0 Monochrome=1 VgaColor=2 Color=4

class IUnknown
fun AddRef:Long Release:Long
sub QueryInterface(riid,&ppvObj)

class IDispatch
sub GetTypeInfoCount(&pctinfo:Long) GetTypeInfo(itinfo:Long,lcid:Long,&pptinfo)

class IEnumVARIANT
sub Clone(&ppenum:IEnumVARIANT) Next(celt:Long,&rgvar,&pceltFetched:Long) Reset Skip(celt:Long)

part FontProperties
let Name:String Size:Currency Bold:Boolean Italic:Boolean Underline:Boolean Strikethrough:Boolean
    Weight:Integer Charset:Integer

class Font default Name with FontProperties

class IFont with FontProperties
get hFont:OLE_HANDLE
fun IsEqual(pfontOther:IFont):Boolean
sub AddRefHfont(hFont:OLE_HANDLE) Clone(&ppfont:IFont) ReleaseHfont(hFont:OLE_HANDLE)
    SetRatio(cyLogical:Long,cyHimetric:Long)

class StdFont new default Name with FontProperties
event FontChanged(PropertyName:String)

class FontEvents
event FontChanged(PropertyName:String)

part PictureProperties
get Handle:OLE_HANDLE Type:Integer Width:OLE_XSIZE_HIMETRIC Height:OLE_YSIZE_HIMETRIC
let hPal:OLE_HANDLE

class Picture default Handle with PictureProperties
sub Render(hdc:Long,x:Long,y:Long,cx:Long,cy:Long,xSrc:OLE_XPOS_HIMETRIC,ySrc:OLE_YPOS_HIMETRIC,cxSrc:OLE_XSIZE_HIMETRIC,cySrc:OLE_YSIZE_HIMETRIC,prcWBounds)

class IPicture with PictureProperties
get Attributes:Long CurDC:Long
let KeepOriginalFormat:Boolean
sub Render(hdc:Long,x:Long,y:Long,cx:Long,cy:Long,xSrc:OLE_XPOS_HIMETRIC,ySrc:OLE_YPOS_HIMETRIC,cxSrc:OLE_XSIZE_HIMETRIC,cySrc:OLE_YSIZE_HIMETRIC,prcWBounds)
    PictureChanged SelectPicture(hdcIn:Long,&phdcOut:Long,&phbmpOut:OLE_HANDLE)
    SetHdc(hdc:OLE_HANDLE) SaveAsFile(pstm,fSaveMemCopy:Boolean,&pcbSize:Long)

class StdPicture new default Handle with PictureProperties
sub Render(hdc:Long,x:Long,y:Long,cx:Long,cy:Long,xSrc:OLE_XPOS_HIMETRIC,ySrc:OLE_YPOS_HIMETRIC,cxSrc:OLE_XSIZE_HIMETRIC,cySrc:OLE_YSIZE_HIMETRIC,prcWBounds)

module StdFunctions
fun LoadPicture([filename],[widthDesired:Long],[heightDesired:Long],[flags:LoadPictureConstants]):IPictureDisp
sub SavePicture(Picture:IPictureDisp,filename:String)
)";

}  // namespace vendrel::builtins
