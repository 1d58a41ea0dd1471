VERSION 5.00
Object = "{831FDD16-0C5C-11D2-A9FC-0000F8754DA1}#2.0#0"; "MSCOMCTL.OCX"
Begin VB.MDIForm frmMain 
   BackColor       =   &H8000000C&
   Caption         =   "Ledger"
   ClientHeight    =   7200
   ClientLeft      =   165
   ClientTop       =   735
   ClientWidth     =   10800
   HelpContextID   =   1400
   LinkTopic       =   "MDIForm1"
   StartUpPosition =   3  'Windows Default
   Begin MSComctlLib.StatusBar stbMain 
      Align           =   2  'Align Bottom
      Height          =   315
      Left            =   0
      TabIndex        =   0
      Top             =   6885
      Width           =   10800
      _ExtentX        =   19050
      _ExtentY        =   556
      Style           =   1
      SimpleText      =   "Ready: F1 for help"
      _Version        =   393216
   End
   Begin VB.Menu mnuFile 
      Caption         =   "&File"
      HelpContextID   =   1410
      Begin VB.Menu mnuFileNew 
         Caption         =   "&New ledger window"
         Shortcut        =   ^N
      End
      Begin VB.Menu mnuFilePrint 
         Caption         =   "&Print the journal..."
         Shortcut        =   ^P
      End
      Begin VB.Menu mnuFileBar 
         Caption         =   "-"
      End
      Begin VB.Menu mnuFileExit 
         Caption         =   "E&xit"
      End
   End
   Begin VB.Menu mnuView 
      Caption         =   "&View"
      Begin VB.Menu mnuViewKind 
         Caption         =   "&Assets"
         Checked         =   -1  'True
         Index           =   1
      End
      Begin VB.Menu mnuViewKind 
         Caption         =   "&Liabilities"
         Index           =   2
      End
      Begin VB.Menu mnuViewKind 
         Caption         =   "&Income"
         Index           =   3
      End
      Begin VB.Menu mnuViewKind 
         Caption         =   "&Expenses"
         Index           =   4
      End
   End
   Begin VB.Menu mnuWindow 
      Caption         =   "&Window"
      WindowList      =   -1  'True
      Begin VB.Menu mnuWindowCascade 
         Caption         =   "&Cascade"
      End
   End
End
Attribute VB_Name = "frmMain"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Attribute VB_HelpID = 1400
'##MODULE_SUMMARY The main window. It holds the ledger windows and prints the journal.
Option Explicit

Private WithEvents mReport As ReportBuilder
Attribute mReport.VB_VarHelpID = 1420
Private mKind As AccountKind

Private Sub MDIForm_Load()
    Me.Caption = App.Title & " - " & Firm.FirmName
    mKind = akAsset
    mnuFileNew_Click
End Sub

Private Sub MDIForm_QueryUnload(Cancel As Integer, UnloadMode As Integer)
    If Books.Difference = 0 Then Exit Sub
    Cancel = (MsgBox("The books do not balance. Leave all the same?", _
                     vbYesNo Or vbQuestion Or vbDefaultButton2, App.Title) = vbNo)
End Sub

'##SUMMARY Shows a line of text at the foot of the window.
'##PARAM Message The text; an empty one says that the program is ready.
Public Sub ShowStatus(Optional ByVal Message As String)
    If Len(Message) = 0 Then Message = "Ready: F1 for help"
    stbMain.SimpleText = Message
End Sub

'##SUMMARY The kind of account that new windows show.
Public Property Get CurrentKind() As AccountKind
    CurrentKind = mKind
End Property

Private Sub mnuFileNew_Click()
    Dim NewWindow As frmLedger

    Set NewWindow = New frmLedger
    NewWindow.ShowJournal CurrentJournal
    NewWindow.Show
End Sub

Private Sub mnuFilePrint_Click()
    Set mReport = New ReportBuilder
    mReport.Width = 78
    mReport.Build CurrentJournal
    Printer.Print mReport.Text
    Printer.EndDoc
    Set mReport = Nothing
    ShowStatus
End Sub

Private Sub mnuFileExit_Click()
    Unload Me
End Sub

' One handler for the four kinds: the index is the kind.
Private Sub mnuViewKind_Click(Index As Integer)
    Dim Item As Menu

    For Each Item In mnuViewKind
        Item.Checked = (Item.Index = Index)
    Next Item
    mKind = Index
End Sub

Private Sub mnuWindowCascade_Click()
    Me.Arrange vbCascade
End Sub

Private Sub mReport_Progress(ByVal Row As Long, ByVal RowCount As Long)
    ShowStatus "Printing row " & Row & " of " & RowCount
End Sub
