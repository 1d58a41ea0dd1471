Attribute VB_Name = "modOdds"
Option Explicit
Option Base 1
DefLng I-N
'## Shelves of the store, from the left.
Public Enum Shelf
  shLeft = 1
  shMiddle
  shRight = shMiddle Or 4 'the door
End Enum
Private Type Box
  Label As String * 20
  Count(1 To 3, 0 To 5) As Integer
End Type
#If Trial Then
Public Const Limit = 10, Name$ = "trial: ""ten"""
#Else
Public Const Limit = 1000, Name$ = "whole"
#End If
Private Declare Function GetTickCount Lib "kernel32" () As Long
Dim mBoxes() As Box, mNext%, mText$: Dim mRest

'##SUMMARY Adds up
'what lies on a shelf.
'##PARAM Where The shelf.
'##RETURNS The sum.
Public Function Total( _
    ByVal Where As Shelf, _
    Optional ByRef Factor As Double = 1.5, _
    ParamArray More() As Variant) As Currency
10  Dim i, n As Long: n = Limit
20  If n > 5 Then GoTo Done Else n = n + 1: mNext = n ' both
    For i = 1 To n: Total = Total + Worth(i, Where) * Factor: Next
Done:
    If Trial Then Exit Function
End Function

Private Function Worth(ByVal Index As Long, ByVal Where As Shelf) As Currency
    On Error Resume Next
    With mBoxes(Index)
        Worth = .Count(Where, 0) + Len(.Label)
    End With
    Rem nothing else counts
End Function

Sub Main()
    Dim Pile As New Stack
    Pile.Push Total(shLeft): Pile.Push "x"
    frmTill.Show
    Debug.Print Pile.Top; Name$; GetTickCount
    CallByName Pile, "Clear", VbMethod
End Sub

Private Sub NeverCalled()
    Call NeverEither
End Sub
Private Sub NeverEither()
    NeverCalled
End Sub
