Attribute VB_Name = "modWin32"
'##MODULE_SUMMARY What the program asks of Windows itself.
Option Explicit

'##SUMMARY Sent to a list box to have its columns set.
Public Const LB_SETTABSTOPS As Long = &H192
Private Const SOUND_ERROR As Long = &H10&

'##SUMMARY A point of the screen, in pixels.
Public Type POINTAPI
    X As Long
    Y As Long
End Type

'##SUMMARY Reads one value of a settings file.
'##PARAM lpAppName The section.
'##PARAM lpKeyName The name of the value.
'##PARAM lpDefault What is given when the value is not there.
'##RETURNS The number of characters written into lpReturnedString.
Public Declare Function GetPrivateProfileString Lib "kernel32" Alias "GetPrivateProfileStringA" ( _
    ByVal lpAppName As String, _
    ByVal lpKeyName As Any, _
    ByVal lpDefault As String, _
    ByVal lpReturnedString As String, _
    ByVal nSize As Long, _
    ByVal lpFileName As String) As Long

'##SUMMARY Milliseconds since Windows was started.
Public Declare Function GetTickCount Lib "kernel32" () As Long
Private Declare Sub Sleep Lib "kernel32" (ByVal dwMilliseconds As Long)

'##SUMMARY Sends a message to a window and waits for the answer.
Public Declare Function SendMessage Lib "user32" Alias "SendMessageA" ( _
    ByVal hWnd As Long, ByVal wMsg As Long, ByVal wParam As Long, lParam As Any) As Long
Public Declare Function GetCursorPos Lib "user32" (lpPoint As POINTAPI) As Long
Private Declare Function MessageBeep Lib "user32" (ByVal wType As Long) As Long

'##SUMMARY Sets the columns of a list box.
'##PARAM List The list box.
'##PARAM Stops The positions of the columns, in quarters of a character.
Public Sub SetTabStops(ByVal List As ListBox, ParamArray Stops() As Variant)
    Dim Positions() As Long
    Dim i As Long

    If UBound(Stops) < 0 Then Exit Sub
    ReDim Positions(0 To UBound(Stops))
    For i = 0 To UBound(Stops)
        Positions(i) = Stops(i)
    Next i
    SendMessage List.hWnd, LB_SETTABSTOPS, UBound(Stops) + 1, Positions(0)
End Sub

'##SUMMARY The sound of a refusal, and a moment of rest.
Public Sub SoundRefusal()
    MessageBeep SOUND_ERROR
    Sleep 50
End Sub
