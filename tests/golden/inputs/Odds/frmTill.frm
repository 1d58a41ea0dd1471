VERSION 5.00
Begin VB.Form frmTill 
   Caption         =   "Till"
   ClientHeight    =   2000
   ClientWidth     =   4000
   Begin VB.CommandButton cmdPay 
      Caption         =   "&Pay"
      Height          =   375
      Index           =   0
      Left            =   120
      Top             =   120
      Width           =   1215
   End
   Begin VB.Menu mnuFile 
      Caption         =   "&File"
      Begin VB.Menu mnuFileOpen 
         Caption         =   "&Open..."
         Shortcut        =   ^O
      End
   End
End
Attribute VB_Name = "frmTill"
Private WithEvents mStack As Stack

Private Sub cmdPay_Click(Index As Integer)
    mStack.Push Index
End Sub
Private Sub cmdGone_Click()
End Sub
Private Sub mnuFileOpen_Click()
    Me.Caption = Caption & mStack.Top
End Sub
Private Sub mStack_Full(ByVal Depth As Long)
    MsgBox "full at " & Depth, vbExclamation
End Sub
