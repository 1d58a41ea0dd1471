Attribute VB_Name = "modMain"
Attribute VB_HelpID = 1010
Attribute VB_Description = "Starts the program and keeps what every window needs"
'##MODULE_SUMMARY Starts the program and keeps what every window needs: the
'##MODULE_SUMMARY settings of the firm, its accounts and the journal of the year.
Option Explicit

' Set to 1 to write every step of the start into the log file.
#Const TRACE_START = 0

'##SUMMARY The number of accounts that the books can hold.
Public Const MAX_ACCOUNTS As Long = 1000
'##SUMMARY How amounts are shown and printed.
Public Const AMOUNT_FORMAT As String = "#,##0.00"
'##SUMMARY The account that every cash payment goes through.
Public Const CASH_ACCOUNT As Long = 1000, SALES_ACCOUNT As Long = 4000
'##SUMMARY The account for differences that nobody has explained yet.
Public Const SUSPENSE_ACCOUNT As Long = 9000
Private Const SETTINGS_FILE = "Ledger.ini"
Private Const LOG_FILE = "Ledger.log"

'##SUMMARY What to do with a voucher that does not balance.
'##REMARKS The setting is called Unbalanced in the settings file.
Public Enum UnbalancedAction
    uaRefuse = 0    '##SUMMARY The voucher is refused with a message.
    uaSuspend       '##SUMMARY The difference goes to the suspense account.
    uaAsk = &H10    '##SUMMARY The user decides, voucher by voucher.
End Enum

'##SUMMARY What the program knows about the firm that keeps these books.
Public Type FirmSettings
    FirmName As String          '##SUMMARY The name, as it stands on letters.
    FirstMonth As Integer       '##SUMMARY The month that opens the year, 1 to 12.
    Currency3 As String * 3     '##SUMMARY The currency, as its three letters.
    TaxRates(1 To 3) As Double  '##SUMMARY Full, reduced and zero rate.
    Unbalanced As UnbalancedAction
End Type

'##SUMMARY The settings, read once at the start.
Public Firm As FirmSettings
'##SUMMARY All accounts of the firm.
Public Books As Accounts
'##SUMMARY The journal of the year that is open.
'##IS_NEW
Public CurrentJournal As Journal
Private mStarted As Date

'##SUMMARY Where the program starts.
'##REMARKS A second copy of the program only brings the first one to the front.
Public Sub Main()
Attribute Main.VB_Description = "Where the program starts"
    On Error GoTo Failed

    mStarted = Now
    If App.PrevInstance Then
        MsgBox "Ledger is already running.", vbInformation, App.Title
        Exit Sub
    End If

    LoadSettings
    OpenBooks
#If DEMO Then
    FillWithExamples
#ElseIf TRACE_START Then
    WriteLog "Started with " & Books.Count & " accounts"
#Else
    If Books.Count = 0 Then OpenStandardAccounts
#End If
    frmMain.Show
    Exit Sub

Failed:
    MsgBox "Ledger could not start: " & Err.Description, vbCritical, App.Title
End Sub

'##SUMMARY Reads the settings of the firm from the file beside the program.
Private Sub LoadSettings()
    Dim Position As Integer, Rates() As String

    With Firm
        .FirmName = ReadSetting("Firm", "Name", "Brontë & Sons")
        .FirstMonth = CInt(ReadSetting("Firm", "FirstMonth", "1"))
        .Currency3 = ReadSetting("Firm", "Currency", "GBP")
        .Unbalanced = CLng(ReadSetting("Firm", "Unbalanced", CStr(uaRefuse)))
        Rates = Split(ReadSetting("Tax", "Rates", "20;5;0"), ";")
        For Position = LBound(.TaxRates) To UBound(.TaxRates)
            .TaxRates(Position) = Val(Rates(Position - 1)) / 100
        Next Position
    End With
End Sub

' Makes the accounts and the journal of the year; nothing is read yet.
Private Sub OpenBooks()
    Set Books = New Accounts
    Set CurrentJournal = New Journal
    CurrentJournal.OpenYear Year(FirstDayOfYear(Date))
End Sub

' The accounts that nearly every firm begins with.
Private Sub OpenStandardAccounts()
    Books.Add CASH_ACCOUNT, "Cash", akAsset
    Books.Add 1200, "Bank", akAsset
    Books.Add 2000, "Creditors", akLiability
    Books.Add SALES_ACCOUNT, "Sales", akIncome
    Books.Add SUSPENSE_ACCOUNT, "Suspense", akLiability
    Books.Add 5000, "Rent", akExpense: Books.Add 5100, "Postage", akExpense
End Sub

#If DEMO Then
'##SUMMARY Fills the books of the demonstration with a few entries.
'##EXCLUDE
Private Sub FillWithExamples()
    Dim Entry As Voucher

    OpenStandardAccounts
    Set Entry = New Voucher
    Entry.Narrative = "Ten reams of paper, sold for £45.00"
    Entry.AddLine CASH_ACCOUNT, 45@
    Entry.AddLine SALES_ACCOUNT, -45@
    CurrentJournal.Post Entry
End Sub
#End If

'##SUMMARY The first day of the year of business in which a day lies.
'##PARAM AnyDay A day.
'##RETURNS The first day of the month with which that year opened.
Public Function FirstDayOfYear(ByVal AnyDay As Date) As Date
Attribute FirstDayOfYear.VB_HelpID = 1015
    Dim FirstMonth As Integer

    FirstMonth = Firm.FirstMonth
    If FirstMonth < 1 Or FirstMonth > 12 Then FirstMonth = 1
    FirstDayOfYear = DateSerial(Year(AnyDay) + (Month(AnyDay) < FirstMonth), FirstMonth, 1)
End Function

'##SUMMARY An amount as text, with the sign of the firm's currency.
'##PARAM Amount What is to be shown; credits are below zero.
'##PARAM WithSign False leaves the sign of the currency out.
'##RETURNS The text, for example "£1,250.00".
Public Function FormatAmount(ByVal Amount As Currency, _
                             Optional ByVal WithSign As Boolean = True) As String
    Dim Sign As String

    If WithSign Then
        Select Case Firm.Currency3
        Case "GBP"
            Sign = "£"
        Case "EUR"
            Sign = "€"
        Case "USD", "CAD", "AUD"
            Sign = "$"
        Case Else
            Sign = Firm.Currency3 & " "
        End Select
    End If
    FormatAmount = Sign & Format$(Amount, AMOUNT_FORMAT)
End Function

'##SUMMARY Adds a line with the time to the log file.
'##PARAM Message What happened.
Public Sub WriteLog(ByVal Message As String)
    Static LinesWritten As Long
    Dim FileNumber As Integer

    FileNumber = FreeFile
    Open App.Path & "\" & LOG_FILE For Append As #FileNumber
    LinesWritten = LinesWritten + 1
    Print #FileNumber, Format$(Now, "yyyy-mm-dd hh:nn:ss"); Tab(24); LinesWritten; Message
    Close #FileNumber
End Sub

' One value of the settings file, or what is used in its place.
Private Function ReadSetting(Section As String, Key As String, Default As String) As String
    Dim Buffer As String, Length As Long

    Buffer = Space$(255)
    Length = GetPrivateProfileString(Section, Key, Default, Buffer, Len(Buffer), _
                                     App.Path & "\" & SETTINGS_FILE)
    ReadSetting = Left$(Buffer, Length)
End Function
