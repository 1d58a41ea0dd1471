Attribute VB_Name = "modText"
'##MODULE_SUMMARY Texts in columns.
Option Explicit

'##SUMMARY Brings a text to a width.
'##PARAM Text The text. What is too long is cut and ends in a full stop.
'##PARAM Width The width, in characters.
'##PARAM AtRight True to have the blanks in front.
'##RETURNS The text with exactly Width characters.
Public Function PadText(ByVal Text As String, ByVal Width As Integer, _
                        Optional ByVal AtRight As Boolean) As String
    Dim Cell As String * 80

    If Len(Text) > Width Then Text = Left$(Text, Width - 1) & "."
    If AtRight Then
        RSet Cell = Text
        PadText = Right$(Cell, Width)
    Else
        LSet Cell = Text
        PadText = Left$(Cell, Width)
    End If
End Function
