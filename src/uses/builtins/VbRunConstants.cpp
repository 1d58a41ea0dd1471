// The enumerations of VBRUN: what properties, events and methods of forms and controls take.
#include "uses/builtins/Texts.h"

namespace vendrel::builtins {

const std::string_view kVbRunConstants = R"(
library VBRUN

enum AlignConstants vbAlignNone=0 vbAlignTop=1 vbAlignBottom=2 vbAlignLeft=3 vbAlignRight=4
enum AlignmentConstants vbLeftJustify=0 vbRightJustify=1 vbCenter=2
enum ApplicationStartConstants vbSModeStandalone=0 vbSModeAutomation=1
enum AsyncReadConstants vbAsyncReadSynchronousDownload=1 vbAsyncReadOfflineOperation=8
    vbAsyncReadForceUpdate=16 vbAsyncReadResynchronize=512 vbAsyncReadGetFromCacheIfNetFail=524288
enum AsyncStatusCodeConstants vbAsyncStatusCodeError=0 vbAsyncStatusCodeFindingResource=1
    vbAsyncStatusCodeConnecting=2 vbAsyncStatusCodeRedirecting=3
    vbAsyncStatusCodeBeginDownloadData=4 vbAsyncStatusCodeDownloadingData=5
    vbAsyncStatusCodeEndDownloadData=6 vbAsyncStatusCodeUsingCachedCopy=10
    vbAsyncStatusCodeSendingRequest=11 vbAsyncStatusCodeMIMETypeAvailable=13
    vbAsyncStatusCodeCacheFileNameAvailable=14 vbAsyncStatusCodeBeginSyncOperation=15
    vbAsyncStatusCodeEndSyncOperation=16
enum AsyncTypeConstants vbAsyncTypePicture=0 vbAsyncTypeFile=1 vbAsyncTypeByteArray=2
enum BorderStyleConstants vbTransparent=0 vbBSSolid=1 vbBSDash=2 vbBSDot=3 vbBSDashDot=4
    vbBSDashDotDot=5 vbBSInsideSolid=6
enum ButtonConstants vbButtonStandard=0 vbButtonGraphical=1
enum CheckBoxConstants vbUnchecked=0 vbChecked=1 vbGrayed=2
enum ClipBoardConstants vbCFRTF=-16639 vbCFLink=-16640 vbCFText=1 vbCFBitmap=2 vbCFMetafile=3
    vbCFEMetafile=14 vbCFDIB=8 vbCFPalette=9 vbCFFiles=15
enum ColorConstants vbBlack=0 vbRed=255 vbGreen=65280 vbYellow=65535 vbBlue=16711680
    vbMagenta=16711935 vbCyan=16776960 vbWhite=16777215
enum ComboBoxConstants vbComboDropdown=0 vbComboSimple=1 vbComboDropdownList=2
enum DataBOFconstants vbMoveFirst=0 vbBOF=1
enum DataEOFConstants vbMoveLast=0 vbEOF=1 vbAddNew=2
enum DataErrorConstants vbDataErrContinue=0 vbDataErrDisplay=1
enum DataValidateConstants vbDataActionCancel=0 vbDataActionMoveFirst=1 vbDataActionMovePrevious=2
    vbDataActionMoveNext=3 vbDataActionMoveLast=4 vbDataActionAddNew=5 vbDataActionUpdate=6
    vbDataActionDelete=7 vbDataActionFind=8 vbDataActionBookmark=9 vbDataActionClose=10
    vbDataActionUnload=11
enum DefaultCursorTypeConstants vbUseDefaultCursor=0 vbUseODBCCursor=1 vbUseServersideCursor=2
enum DragConstants vbCancel=0 vbBeginDrag=1 vbEndDrag=2
enum DragModeConstants vbManual=0 vbAutomatic=1
enum DragOverConstants vbEnter=0 vbLeave=1 vbOver=2
enum DrawModeConstants vbBlackness=1 vbNotMergePen=2 vbMaskNotPen=3 vbNotCopyPen=4 vbMaskPenNot=5
    vbInvert=6 vbXorPen=7 vbNotMaskPen=8 vbMaskPen=9 vbNotXorPen=10 vbNop=11 vbMergeNotPen=12
    vbCopyPen=13 vbMergePenNot=14 vbMergePen=15 vbWhiteness=16
enum DrawStyleConstants vbSolid=0 vbDash=1 vbDot=2 vbDashDot=3 vbDashDotDot=4 vbInvisible=5
    vbInsideSolid=6
enum FillStyleConstants vbFSSolid=0 vbFSTransparent=1 vbHorizontalLine=2 vbVerticalLine=3
    vbUpwardDiagonal=4 vbDownwardDiagonal=5 vbCross=6 vbDiagonalCross=7
enum FormArrangeConstants vbCascade=0 vbTileHorizontal=1 vbTileVertical=2 vbArrangeIcons=3
enum FormBorderStyleConstants vbBSNone=0 vbFixedSingle=1 vbSizable=2 vbFixedDialog=3 vbFixedDouble=3
    vbFixedToolWindow=4 vbSizableToolWindow=5
enum FormShowConstants vbModeless=0 vbModal=1
enum FormWindowStateConstants vbNormal=0 vbMinimized=1 vbMaximized=2
enum HitResultConstants vbHitResultOutside=0 vbHitResultTransparent=1 vbHitResultClose=2
    vbHitResultHit=3
enum KeyCodeConstants vbKeyLButton=1 vbKeyRButton=2 vbKeyCancel=3 vbKeyMButton=4 vbKeyBack=8
    vbKeyTab=9 vbKeyClear=12 vbKeyReturn=13 vbKeyShift=16 vbKeyControl=17 vbKeyMenu=18 vbKeyPause=19
    vbKeyCapital=20 vbKeyEscape=27 vbKeySpace=32 vbKeyPageUp=33 vbKeyPageDown=34 vbKeyEnd=35
    vbKeyHome=36 vbKeyLeft=37 vbKeyUp=38 vbKeyRight=39 vbKeyDown=40 vbKeySelect=41 vbKeyPrint=42
    vbKeyExecute=43 vbKeySnapshot=44 vbKeyInsert=45 vbKeyDelete=46 vbKeyHelp=47 vbKey0=48 vbKey1=49
    vbKey2=50 vbKey3=51 vbKey4=52 vbKey5=53 vbKey6=54 vbKey7=55 vbKey8=56 vbKey9=57 vbKeyA=65
    vbKeyB=66 vbKeyC=67 vbKeyD=68 vbKeyE=69 vbKeyF=70 vbKeyG=71 vbKeyH=72 vbKeyI=73 vbKeyJ=74
    vbKeyK=75 vbKeyL=76 vbKeyM=77 vbKeyN=78 vbKeyO=79 vbKeyP=80 vbKeyQ=81 vbKeyR=82 vbKeyS=83
    vbKeyT=84 vbKeyU=85 vbKeyV=86 vbKeyW=87 vbKeyX=88 vbKeyY=89 vbKeyZ=90 vbKeyNumpad0=96
    vbKeyNumpad1=97 vbKeyNumpad2=98 vbKeyNumpad3=99 vbKeyNumpad4=100 vbKeyNumpad5=101
    vbKeyNumpad6=102 vbKeyNumpad7=103 vbKeyNumpad8=104 vbKeyNumpad9=105 vbKeyMultiply=106
    vbKeyAdd=107 vbKeySeparator=108 vbKeySubtract=109 vbKeyDecimal=110 vbKeyDivide=111 vbKeyF1=112
    vbKeyF2=113 vbKeyF3=114 vbKeyF4=115 vbKeyF5=116 vbKeyF6=117 vbKeyF7=118 vbKeyF8=119 vbKeyF9=120
    vbKeyF10=121 vbKeyF11=122 vbKeyF12=123 vbKeyF13=124 vbKeyF14=125 vbKeyF15=126 vbKeyF16=127
    vbKeyNumlock=144 vbKeyScrollLock=145
enum LinkErrorConstants vbWrongFormat=1 vbDDESourceClosed=6 vbTooManyLinks=7 vbDataTransferFailed=8
enum LinkModeConstants vbLinkNone=0 vbLinkSource=1 vbLinkAutomatic=1 vbLinkManual=2 vbLinkNotify=3
enum ListBoxConstants vbListBoxStandard=0 vbListBoxCheckbox=1
enum LoadPictureColorConstants vbLPDefault=0 vbLPMonochrome=1 vbLPVGAColor=2 vbLPColor=3
enum LoadPictureSizeConstants vbLPSmall=0 vbLPLarge=1 vbLPSmallShell=2 vbLPLargeShell=3 vbLPCustom=4
enum LoadResConstants vbResBitmap=0 vbResIcon=1 vbResCursor=2
enum LogEventTypeConstants vbLogEventTypeError=1 vbLogEventTypeWarning=2 vbLogEventTypeInformation=4
enum LogModeConstants vbLogAuto=0 vbLogOff=1 vbLogToFile=2 vbLogToNT=3 vbLogOverwrite=16
    vbLogThreadID=32
enum MenuAccelConstants vbMenuAccelCtrlA=1 vbMenuAccelCtrlB=2 vbMenuAccelCtrlC=3 vbMenuAccelCtrlD=4
    vbMenuAccelCtrlE=5 vbMenuAccelCtrlF=6 vbMenuAccelCtrlG=7 vbMenuAccelCtrlH=8 vbMenuAccelCtrlI=9
    vbMenuAccelCtrlJ=10 vbMenuAccelCtrlK=11 vbMenuAccelCtrlL=12 vbMenuAccelCtrlM=13
    vbMenuAccelCtrlN=14 vbMenuAccelCtrlO=15 vbMenuAccelCtrlP=16 vbMenuAccelCtrlQ=17
    vbMenuAccelCtrlR=18 vbMenuAccelCtrlS=19 vbMenuAccelCtrlT=20 vbMenuAccelCtrlU=21
    vbMenuAccelCtrlV=22 vbMenuAccelCtrlW=23 vbMenuAccelCtrlX=24 vbMenuAccelCtrlY=25
    vbMenuAccelCtrlZ=26 vbMenuAccelF1=27 vbMenuAccelF2=28 vbMenuAccelF3=29 vbMenuAccelF4=30
    vbMenuAccelF5=31 vbMenuAccelF6=32 vbMenuAccelF7=33 vbMenuAccelF8=34 vbMenuAccelF9=35
    vbMenuAccelF11=36 vbMenuAccelF12=37 vbMenuAccelCtrlF1=38 vbMenuAccelCtrlF2=39
    vbMenuAccelCtrlF3=40 vbMenuAccelCtrlF4=41 vbMenuAccelCtrlF5=42 vbMenuAccelCtrlF6=43
    vbMenuAccelCtrlF7=44 vbMenuAccelCtrlF8=45 vbMenuAccelCtrlF9=46 vbMenuAccelCtrlF11=47
    vbMenuAccelCtrlF12=48 vbMenuAccelShiftF1=49 vbMenuAccelShfitF2=50 vbMenuAccelShiftF3=51
    vbMenuAccelShiftF4=52 vbMenuAccelShiftF5=53 vbMenuAccelShiftF6=54 vbMenuAccelShiftF7=55
    vbMenuAccelShiftF8=56 vbMenuAccelShiftF9=57 vbMenuAccelShiftF11=58 vbMenuAccelShiftF12=59
    vbMenuAccelShiftCtrlF1=60 vbMenuAccelShiftCtrlF2=61 vbMenuAccelShiftCtrlF3=62
    vbMenuAccelShiftCtrlF4=63 vbMenuAccelShiftCtrlF5=64 vbMenuAccelShiftCtrlF6=65
    vbMenuAccelShiftCtrlF7=66 vbMenuAccelShiftCtrlF8=67 vbMenuAccelShiftCtrlF9=68
    vbMenuAccelShiftCtrlF11=69 vbMenuAccelShiftCtrlF12=70 vbMenuAccelCtrlIns=71
    vbMenuAccelShiftIns=72 vbMenuAccelDel=73 vbMenuAccelShiftDel=74 vbMenuAccelAltBksp=75
enum MenuControlConstants vbPopupMenuLeftAlign=0 vbPopupMenuLeftButton=0 vbPopupMenuRightButton=2
    vbPopupMenuCenterAlign=4 vbPopupMenuRightAlign=8
enum MouseButtonConstants vbLeftButton=1 vbRightButton=2 vbMiddleButton=4
enum MousePointerConstants vbDefault=0 vbArrow=1 vbCrosshair=2 vbIbeam=3 vbIconPointer=4
    vbSizePointer=5 vbSizeNESW=6 vbSizeNS=7 vbSizeNWSE=8 vbSizeWE=9 vbUpArrow=10 vbHourglass=11
    vbNoDrop=12 vbArrowHourglass=13 vbArrowQuestion=14 vbSizeAll=15 vbCustom=99
enum MultiSelectConstants vbMultiSelectNone=0 vbMultiSelectSimple=1 vbMultiSelectExtended=2
enum OLEContainerConstants vbOLEAutomatic=0 vbOLEManual=2 vbOLEActivateGetFocus=1
    vbOLEActivateDoubleclick=2 vbOLEActivateAuto=3 vbOLESizeClip=0 vbOLESizeStretch=1
    vbOLESizeAutoSize=2 vbOLESizeZoom=3 vbOLELinked=0 vbOLEEmbedded=1 vbOLENone=3 vbOLEEither=2
    vbOLEFrozen=1 vbOLEDisplayContent=0 vbOLEDisplayIcon=1 vbOLEPrimary=0 vbOLEShow=-1 vbOLEOpen=-2
    vbOLEHide=-3 vbOLEUIActivate=-4 vbOLEInPlaceActivate=-5 vbOLEDiscardUndoState=-6
    vbOLEMiscFlagMemStorage=1 vbOLEMiscFlagDisableInPlace=2 vbOLEFlagGrayed=1 vbOLEFlagDisabled=2
    vbOLEFlagChecked=8 vbOLEFlagSeparator=2048 vbOLEChanged=0 vbOLESaved=1 vbOLEClosed=2
    vbOLERenamed=3 vbOLEActivateManual=0
enum OldLinkModeConstants vbHot=1 vbServer=1 vbCold=2
enum OLEDragConstants vbOLEDragManual=0 vbOLEDragAutomatic=1
enum OLEDropConstants vbOLEDropNone=0 vbOLEDropManual=1 vbOLEDropAutomatic=2
enum OLEDropEffectConstants vbDropEffectNone=0 vbDropEffectCopy=1 vbDropEffectMove=2
    vbDropEffectScroll=-2147483648
enum PaletteModeConstants vbPaletteModeHalftone=0 vbPaletteModeUseZOrder=1 vbPaletteModeCustom=2
    vbPaletteModeContainer=3 vbPaletteModeNone=4 vbPaletteModeObject=5
enum ParentControlsType vbNoExtender=0 vbExtender=1
enum PictureTypeConstants vbPicTypeNone=0 vbPicTypeBitmap=1 vbPicTypeMetafile=2 vbPicTypeIcon=3
    vbPicTypeEMetafile=4
enum PrinterObjectConstants vbPRCMMonochrome=1 vbPRCMColor=2 vbPRDPSimplex=1 vbPRDPHorizontal=2
    vbPRDPVertical=3 vbPRORPortrait=1 vbPRORLandscape=2 vbPRPQDraft=-1 vbPRPQLow=-2 vbPRPQMedium=-3
    vbPRPQHigh=-4 vbPRPSLetter=1 vbPRPSLetterSmall=2 vbPRPSTabloid=3 vbPRPSLedger=4 vbPRPSLegal=5
    vbPRPSStatement=6 vbPRPSExecutive=7 vbPRPSA3=8 vbPRPSA4=9 vbPRPSA4Small=10 vbPRPSA5=11
    vbPRPSB4=12 vbPRPSB5=13 vbPRPSFolio=14 vbPRPSQuarto=15 vbPRPS10x14=16 vbPRPS11x17=17
    vbPRPSNote=18 vbPRPSEnv9=19 vbPRPSEnv10=20 vbPRPSEnv11=21 vbPRPSEnv12=22 vbPRPSEnv14=23
    vbPRPSCSheet=24 vbPRPSDSheet=25 vbPRPSESheet=26 vbPRPSEnvDL=27 vbPRPSEnvC3=29 vbPRPSEnvC4=30
    vbPRPSEnvC5=28 vbPRPSEnvC6=31 vbPRPSEnvC65=32 vbPRPSEnvB4=33 vbPRPSEnvB5=34 vbPRPSEnvB6=35
    vbPRPSEnvItaly=36 vbPRPSEnvMonarch=37 vbPRPSEnvPersonal=38 vbPRPSFanfoldUS=39
    vbPRPSFanfoldStdGerman=40 vbPRPSFanfoldLglGerman=41 vbPRPSUser=256 vbPRBNUpper=1 vbPRBNLower=2
    vbPRBNMiddle=3 vbPRBNManual=4 vbPRBNEnvelope=5 vbPRBNEnvManual=6 vbPRBNAuto=7 vbPRBNTractor=8
    vbPRBNSmallFmt=9 vbPRBNLargeFmt=10 vbPRBNLargeCapacity=11 vbPRBNCassette=14
enum QueryUnloadConstants vbFormControlMenu=0 vbFormCode=1 vbAppWindows=2 vbAppTaskManager=3
    vbFormMDIForm=4 vbFormOwner=5
enum RasterOpConstants vbDstInvert=&H550009 vbMergeCopy=&HC000CA vbMergePaint=&HBB0226
    vbNotSrcCopy=&H330008 vbNotSrcErase=&H1100A6 vbPatCopy=&HF00021 vbPatInvert=&H5A0049
    vbPatPaint=&HFB0A09 vbSrcAnd=&H8800C6 vbSrcCopy=&HCC0020 vbSrcErase=&H440328
    vbSrcInvert=&H660046 vbSrcPaint=&HEE0086

module RecordsetTypeConstants
const vbRSTypeTable=0 vbRSTypeDynaset=1 vbRSTypeSnapShot=2

enum ScaleModeConstants vbUser=0 vbTwips=1 vbPoints=2 vbPixels=3 vbCharacters=4 vbInches=5
    vbMillimeters=6 vbCentimeters=7 vbHimetric=8 vbContainerPosition=9 vbContainerSize=10
enum ScrollBarConstants vbSBNone=0 vbHorizontal=1 vbVertical=2 vbBoth=3
enum ShapeConstants vbShapeRectangle=0 vbShapeSquare=1 vbShapeOval=2 vbShapeCircle=3
    vbShapeRoundedRectangle=4 vbShapeRoundedSquare=5
enum ShiftConstants vbShiftMask=1 vbCtrlMask=2 vbAltMask=4
enum StartUpPositionConstants vbStartUpManual=0 vbStartUpOwner=1 vbStartUpScreen=2
    vbStartUpWindowsDefault=3
enum SystemColorConstants vbScrollBars=&H80000000 vbDesktop=&H80000001 vbActiveTitleBar=&H80000002
    vbInactiveTitleBar=&H80000003 vbMenuBar=&H80000004 vbWindowBackground=&H80000005
    vbWindowFrame=&H80000006 vbMenuText=&H80000007 vbWindowText=&H80000008 vbTitleBarText=&H80000009
    vbActiveTitleBarText=&H80000009 vbActiveBorder=&H8000000A vbInactiveBorder=&H8000000B
    vbApplicationWorkspace=&H8000000C vbHighlight=&H8000000D vbHighlightText=&H8000000E
    vbButtonFace=&H8000000F vbButtonShadow=&H80000010 vbGrayText=&H80000011 vbButtonText=&H80000012
    vbInactiveCaptionText=&H80000013 vbInactiveTitleBarText=&H80000013 vb3DHighlight=&H80000014
    vb3DDKShadow=&H80000015 vb3DLight=&H80000016 vb3DFace=&H8000000F vb3DShadow=&H80000010
    vbInfoText=&H80000017 vbInfoBackground=&H80000018
enum VariantTypeConstants vbVEmpty=0 vbVNull=1 vbVInteger=2 vbVLong=3 vbVSingle=4 vbVDouble=5
    vbVCurrency=6 vbVDate=7 vbVString=8
enum ZOrderConstants vbBringToFront=0 vbSendToBack=1
)";

}  // namespace vendrel::builtins
