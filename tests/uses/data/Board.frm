VERSION 5.00
Object = "{0ECD9B60-23AA-11D0-B351-00A0C9055D8E}#6.0#0"; "none.ocx"
Begin VB.Form Board
   Caption         =   "Board"
   Begin MSGrid.Grid grdList
      Height          =   375
   End
   Begin VB.CommandButton cmdPick
      Caption         =   "One"
      Index           =   0
   End
   Begin VB.CommandButton cmdPick
      Caption         =   "Two"
      Index           =   1
   End
   Begin VB.TextBox txtName
      Text            =   "Caption"
   End
End
Attribute VB_Name = "Board"
Attribute VB_PredeclaredId = True
Option Explicit

Private WithEvents mShape As Shape
Attribute mShape.VB_VarHelpID = -1
Private mPicked As Long

Private Sub Form_Load()
  Caption = Left(Caption, Width) & txtName
  Set mShape = New Shape
  mShape.Name = Me!txtName.Text
End Sub

Private Sub cmdPick_Click(Index As Integer)
  mPicked = Index
  txtName = mPicked
  Controls(Index).Tag = mPicked
  Helped
End Sub

Private Sub mShape_Drawn(ByVal Edge As Long, Cancel As Boolean)
  Cancel = (Edge > mPicked)
  grdList.Refresh
End Sub

Private Sub grdList_Sorted()
End Sub
