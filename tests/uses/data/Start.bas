Attribute VB_Name = "Start"
Option Explicit

#Const TRACE = 0

Public Type Place
  X As Long
  Y As Long
End Type

Private Type Track
  Points(1 To 9) As Place
  Used As Long
End Type

Private Declare Function SetTimer Lib "user32" (ByVal hWnd As Long, ByVal ID As Long, _
  ByVal Elapse As Long, ByVal Handler As Long) As Long

Public Const LIMIT As Long = 9
Private mTrack As Track
Private mNames() As String, mLast As Shape

' Every kind of use, and every answer.
Public Sub Main()
  Dim Drawn As Shape, Any1 As Object, Data As ADODB.Recordset
  Dim Count As Long, Text As String
  Set Drawn = New Shape
  Drawn.Name = "Main": Drawn = "by its default member"
  Count = Total(Count, 3)
  Total Count, (Count)
  Widen mTrack.Points(1).X, By:=2
  With mTrack
    .Points(Count).X = LIMIT
    .Used = .Used + 1
  End With
  ReDim Preserve mNames(1 To LIMIT)
  mNames(1) = Drawn.Name & Left$(Text, 1) & VBA.Strings.Right(Text, 1) ' Count
  For Each Any1 In Board.Controls
    If TypeOf Any1 Is TextBox Then Any1.Text = Any1.Unheard(1)
  Next Any1
  Data.Open "select", , adOpenStatic
  Text = Data!Title & Data![Year]
  Board.cmdPick(1).Enabled = Board.cmdPick(Count).Enabled
  Board.grdList.Rows = Drawn.Edge
  SetTimer 0, 0, 100, AddressOf Tick
  Helped
  Other.Helped
  Kinds.Start.Report Shape.Red
#If TRACE Then
  Report Count
#End If
  On Error GoTo Failed
  Missing = Drawn.Nowhere
  Exit Sub
Failed:
  Report Err.Number
End Sub

Private Function Total(ByRef Sum As Long, ByVal Further As Long) As Long
  Total = Sum + Further
  If Further > LIMIT Then Total = Total(Sum, Further - 1)
End Function

Private Sub Widen(ByRef Value As Long, Optional ByVal By As Long = LIMIT)
  Value = Value + By
End Sub

Public Sub Report(ByVal Number As Long)
  Dim LIMIT As String
  LIMIT = "LIMIT " & Number
  Debug.Print LIMIT; Tab(9); mLast.Name
End Sub

Public Sub Tick()
  Set mLast = Nothing
End Sub

Public Sub Helped()
End Sub
