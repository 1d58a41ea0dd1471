Attribute VB_Name = "modTwice"
Public Sub Again
End Sub
