VERSION 5.00
Begin VB.Form frmLedger 
   Caption         =   "Journal"
   ClientHeight    =   5400
   ClientLeft      =   60
   ClientTop       =   450
   ClientWidth     =   8400
   BeginProperty Font 
      Name            =   "Tahoma"
      Size            =   8.25
      Charset         =   0
      Weight          =   400
      Underline       =   0   'False
      Italic          =   0   'False
      Strikethrough   =   0   'False
   EndProperty
   HelpContextID   =   1500
   LinkTopic       =   "Form1"
   MDIChild        =   -1  'True
   ScaleHeight     =   5400
   ScaleWidth      =   8400
   Begin VB.ListBox lstEntries 
      Height          =   2595
      HelpContextID   =   1510
      Left            =   120
      TabIndex        =   0
      ToolTipText     =   "The vouchers of the span of days chosen below"
      Top             =   120
      Width           =   8175
   End
   Begin VB.PictureBox picEntry 
      Align           =   2  'Align Bottom
      BorderStyle     =   0  'None
      Height          =   2535
      Left            =   0
      ScaleHeight     =   2535
      ScaleWidth      =   8400
      TabIndex        =   1
      Top             =   2865
      Width           =   8400
      Begin VB.Frame fraSpan 
         Caption         =   "Show: the vouchers of"
         Height          =   1935
         Left            =   120
         TabIndex        =   8
         Top             =   120
         Width           =   2175
         Begin VB.OptionButton optSpan 
            Caption         =   "&Today"
            Height          =   255
            Index           =   0
            Left            =   240
            TabIndex        =   9
            Top             =   360
            Width           =   1695
         End
         Begin VB.OptionButton optSpan 
            Caption         =   "This &month"
            Height          =   255
            Index           =   1
            Left            =   240
            TabIndex        =   10
            Top             =   720
            Width           =   1695
         End
         Begin VB.OptionButton optSpan 
            Caption         =   "The whole &year"
            Height          =   255
            Index           =   2
            Left            =   240
            TabIndex        =   11
            Top             =   1080
            Value           =   -1  'True
            Width           =   1695
         End
      End
      Begin VB.Frame fraEntry 
         Caption         =   "New voucher"
         Height          =   1935
         Left            =   2520
         TabIndex        =   2
         Top             =   120
         Width           =   5775
         Begin VB.TextBox txtNarrative 
            BeginProperty Font 
               Name            =   "Tahoma"
               Size            =   8.25
               Charset         =   0
               Weight          =   700
               Underline       =   0   'False
               Italic          =   0   'False
               Strikethrough   =   0   'False
            EndProperty
            Height          =   315
            Left            =   1320
            MaxLength       =   80
            TabIndex        =   3
            Top             =   360
            Width           =   4215
         End
         Begin VB.ComboBox cboAccount 
            Height          =   315
            Left            =   1320
            Style           =   2  'Dropdown List
            TabIndex        =   4
            Top             =   840
            Width           =   2415
         End
         Begin Ledger.ctlAmount amtEntry 
            Height          =   315
            Left            =   3840
            TabIndex        =   5
            Top             =   840
            Width           =   1695
            _ExtentX        =   2990
            _ExtentY        =   556
         End
         Begin VB.CommandButton cmdEntry 
            Caption         =   "&Post"
            Default         =   -1  'True
            Height          =   375
            Index           =   0
            Left            =   3240
            TabIndex        =   6
            Top             =   1380
            Width           =   1095
         End
         Begin VB.CommandButton cmdEntry 
            Cancel          =   -1  'True
            Caption         =   "&Clear"
            Height          =   375
            Index           =   1
            Left            =   4440
            TabIndex        =   7
            Top             =   1380
            Width           =   1095
         End
         Begin VB.Label lblEntry 
            Caption         =   "N&arrative:"
            Height          =   255
            Index           =   0
            Left            =   240
            TabIndex        =   12
            Top             =   420
            Width           =   975
         End
         Begin VB.Label lblEntry 
            Caption         =   "Account:"
            Height          =   255
            Index           =   1
            Left            =   240
            TabIndex        =   13
            Top             =   900
            Width           =   975
         End
      End
   End
   Begin VB.Menu mnuEntry 
      Caption         =   "&Voucher"
      Begin VB.Menu mnuEntryShow 
         Caption         =   "&Show the lines"
         Shortcut        =   {F4}
      End
   End
End
Attribute VB_Name = "frmLedger"
Attribute VB_GlobalNameSpace = False
Attribute VB_Creatable = False
Attribute VB_PredeclaredId = True
Attribute VB_Exposed = False
Attribute VB_HelpID = 1500
'##MODULE_SUMMARY A window on a journal: lists its vouchers and takes new ones.
Option Explicit

Private Enum EntryButton
    ebPost
    ebClear
End Enum

Private Enum DaySpan
    dsToday
    dsMonth
    dsYear
End Enum

'##SUMMARY The journal that the window shows.
Private WithEvents mJournal As Journal
Attribute mJournal.VB_VarHelpID = -1
Private mSpan As DaySpan

'##SUMMARY Takes a journal and lists its vouchers.
'##PARAM NewJournal The journal; the window listens to it from now on.
Public Sub ShowJournal(ByVal NewJournal As Journal)
Attribute ShowJournal.VB_HelpID = 1520
    Set mJournal = NewJournal
    Me.Caption = "Journal " & mJournal.CurrentYear
    ListEntries
End Sub

Private Sub Form_Load()
    mSpan = dsYear
    SetTabStops lstEntries, 50, 200
    FillAccounts
End Sub

Private Sub Form_Unload(Cancel As Integer)
    Set mJournal = Nothing
End Sub

Private Sub Form_Resize()
    If Me.WindowState = vbMinimized Then Exit Sub
    lstEntries.Move 120, 120, Me.ScaleWidth - 240, Me.ScaleHeight - picEntry.Height - 240
End Sub

Private Sub cmdEntry_Click(Index As Integer)
    Select Case Index
        Case ebPost
            PostEntry
        Case ebClear
            ClearEntry
    End Select
End Sub

Private Sub optSpan_Click(Index As Integer)
    mSpan = Index
    If Not mJournal Is Nothing Then ListEntries
End Sub

Private Sub mnuEntryShow_Click()
    Dim Entry As IPostable

    If lstEntries.ListIndex < 0 Then Exit Sub
    Set Entry = EntriesOfSpan.Item(lstEntries.ListIndex + 1)
    MsgBox Entry.Narrative, vbInformation, Format$(Entry.PostingDate, "Long Date")
End Sub

Private Sub amtEntry_Change()
    cmdEntry(ebPost).Enabled = (amtEntry.Value <> 0)
End Sub

Private Sub mJournal_Posted(ByVal Entry As IPostable, ByVal LineCount As Long)
    ListEntries
    frmMain.ShowStatus LineCount & " lines posted"
End Sub

' A difference of a few pence is not worth a question.
Private Sub mJournal_Unbalanced(ByVal Entry As IPostable, Action As UnbalancedAction)
    If Abs(Entry.Difference) < 0.05 Then
        Action = uaSuspend
    ElseIf Action = uaAsk Then
        If MsgBox("The voucher is out by " & FormatAmount(Entry.Difference) & ". Post it?", _
                  vbYesNo Or vbQuestion, App.Title) = vbYes Then
            Action = uaSuspend
        Else
            Action = uaRefuse
        End If
    End If
End Sub

' Every entry of this window is a cash payment, or a payment into the cash box.
Private Sub PostEntry()
    Dim Entry As Voucher

    If cboAccount.ListIndex < 0 Then Exit Sub
    Set Entry = New Voucher
    With Entry
        .Narrative = txtNarrative.Text
        .AddLine cboAccount.ItemData(cboAccount.ListIndex), amtEntry.Value
        .AddLine CASH_ACCOUNT, -amtEntry.Value
    End With
    If mJournal.Post(Entry) Then ClearEntry
End Sub

Private Sub ClearEntry()
    txtNarrative.Text = vbNullString: amtEntry.Value = 0
    txtNarrative.SetFocus
End Sub

Private Sub FillAccounts()
    Dim Entry As Account

    cboAccount.Clear
    For Each Entry In Books
        If Entry.Kind = frmMain.CurrentKind Or Entry.Kind = akExpense Then
            cboAccount.AddItem Entry.Number & "  " & Entry.Caption
            cboAccount.ItemData(cboAccount.NewIndex) = Entry.Number
        End If
    Next Entry
End Sub

Private Sub ListEntries()
    Dim Entry As IPostable

    lstEntries.Clear
    For Each Entry In EntriesOfSpan()
        lstEntries.AddItem Format$(Entry.PostingDate, "Short Date") & vbTab & Entry.Narrative
    Next Entry
End Sub

' The vouchers of the days that the option buttons name.
Private Function EntriesOfSpan() As Collection
    Select Case mSpan
        Case dsToday
            Set EntriesOfSpan = mJournal.Entries(Date, Date)
        Case dsMonth
            Set EntriesOfSpan = mJournal.Entries(DateSerial(Year(Date), Month(Date), 1))
        Case dsYear
            Set EntriesOfSpan = mJournal.Entries(FirstDay:=FirstDayOfYear(Date))
    End Select
End Function
