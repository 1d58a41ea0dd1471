VERSION 5.00
Begin VB.UserControl ctlAmount 
   ClientHeight    =   315
   ClientLeft      =   0
   ClientTop       =   0
   ClientWidth     =   1695
   ScaleHeight     =   315
   ScaleWidth      =   1695
   Begin VB.TextBox txtAmount 
      Alignment       =   1  'Right Justify
      Height          =   315
      Left            =   300
      TabIndex        =   0
      Text            =   "0.00"
      Top             =   0
      Width           =   1395
   End
   Begin VB.Label lblSign 
      Caption         =   "£"
      Height          =   255
      Left            =   0
      TabIndex        =   1
      Top             =   60
      Width           =   255
   End
End
Attribute VB_Name = "ctlAmount"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = True
Attribute VB_PredeclaredId = False
Attribute VB_Exposed = False
Attribute VB_HelpID = 1600
Attribute VB_Description = "Takes an amount of money"
'##MODULE_SUMMARY Takes an amount of money from the keyboard: digits, one point, one sign.
Option Explicit

Private Const DEFAULT_SIGN As String = "£"

'##SUMMARY The amount has changed.
Public Event Change()
Attribute Change.VB_Description = "The amount has changed"
Attribute Change.VB_MemberFlags = "200"
'##SUMMARY A key was pressed that does not belong to an amount.
'##PARAM KeyAscii The key. Set it to 0 and nothing is heard.
Public Event Refused(KeyAscii As Integer)

Private mValue As Currency

'##SUMMARY The amount.
Public Property Get Value() As Currency
Attribute Value.VB_Description = "The amount"
Attribute Value.VB_HelpID = 1610
Attribute Value.VB_UserMemId = 0
    Value = mValue
End Property

Public Property Let Value(ByVal NewValue As Currency)
    If NewValue = mValue Then Exit Property
    mValue = NewValue
    ShowValue
    PropertyChanged "Value"
    RaiseEvent Change
End Property

'##SUMMARY The sign in front of the amount.
Public Property Get CurrencySign() As String
    CurrencySign = lblSign.Caption
End Property

Public Property Let CurrencySign(ByVal NewSign As String)
    lblSign.Caption = NewSign
    PropertyChanged "CurrencySign"
End Property

'##SUMMARY The font of sign and amount.
Public Property Get Font() As StdFont
Attribute Font.VB_UserMemId = -512
    Set Font = txtAmount.Font
End Property

Public Property Set Font(ByVal NewFont As StdFont)
    Set txtAmount.Font = NewFont
    Set lblSign.Font = NewFont
    PropertyChanged "Font"
End Property

'##SUMMARY False keeps the user from changing the amount.
Public Property Get Enabled() As Boolean
Attribute Enabled.VB_UserMemId = -514
    Enabled = UserControl.Enabled
End Property

Public Property Let Enabled(ByVal NewEnabled As Boolean)
    UserControl.Enabled = NewEnabled
    txtAmount.Enabled = NewEnabled
    PropertyChanged "Enabled"
End Property

Private Sub UserControl_InitProperties()
    CurrencySign = DEFAULT_SIGN
    Set Font = Ambient.Font
End Sub

Private Sub UserControl_ReadProperties(PropBag As PropertyBag)
    mValue = PropBag.ReadProperty("Value", 0)
    CurrencySign = PropBag.ReadProperty("CurrencySign", DEFAULT_SIGN)
    Set Font = PropBag.ReadProperty("Font", Ambient.Font)
    Enabled = PropBag.ReadProperty("Enabled", True)
    ShowValue
End Sub

Private Sub UserControl_WriteProperties(PropBag As PropertyBag)
    With PropBag
        .WriteProperty "Value", mValue, 0
        .WriteProperty "CurrencySign", CurrencySign, DEFAULT_SIGN
        .WriteProperty "Font", Font, Ambient.Font
        .WriteProperty "Enabled", Enabled, True
    End With
End Sub

Private Sub UserControl_Resize()
    If UserControl.ScaleWidth > txtAmount.Left Then
        txtAmount.Width = UserControl.ScaleWidth - txtAmount.Left
    End If
    txtAmount.Height = UserControl.ScaleHeight
End Sub

Private Sub txtAmount_KeyPress(KeyAscii As Integer)
    Select Case Chr$(KeyAscii)
        Case "0" To "9", vbBack
            ' belongs to an amount
        Case "."
            If InStr(txtAmount.Text, ".") > 0 Then Refuse KeyAscii
        Case "-"
            If txtAmount.SelStart > 0 Then Refuse KeyAscii
        Case Else
            Refuse KeyAscii
    End Select
End Sub

Private Sub txtAmount_LostFocus()
    On Error Resume Next
    Value = CCur(Val(txtAmount.Text))
    If Err.Number <> 0 Then ShowValue
End Sub

' The host of the control has the last word on a key.
Private Sub Refuse(KeyAscii As Integer)
    RaiseEvent Refused(KeyAscii)
    If KeyAscii <> 0 Then Beep
    KeyAscii = 0
End Sub

Private Sub ShowValue()
    txtAmount.Text = Format$(mValue, "0.00")
End Sub
