Attribute VB_Name = "Other"

Private Used

Public Sub Helped()
  Loose = Used + 1
  Used = Loose
  Shared1
  Again
End Sub

Public Sub Again()
  Line Input #1, Text$: Rem Used
  Mid(Text$, 1) = Used
  Helped
End Sub
