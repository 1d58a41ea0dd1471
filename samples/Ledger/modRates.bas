Attribute VB_Name = "modRates"
'##MODULE_SUMMARY Exchange rates. The oldest part of the program: it ran in a
'##MODULE_SUMMARY cash register before there were windows, and still gives the same cents.
DefInt A-Q, S-Z
DefDbl R

Const NUMBEROFRATES = 4
Dim Rate(NUMBEROFRATES) As Double
Dim RateName$(NUMBEROFRATES)
Dim Loaded

Rem ---- The table. The rates are those of the bank, for one pound. ----
Sub LoadRates()
10    On Error GoTo 100
20    If Loaded Then Exit Sub
30    RateName$(1) = "GBP": Rate(1) = 1#
40    RateName$(2) = "EUR": Rate(2) = 1.1725
50    RateName$(3) = "USD": Rate(3) = 1.2694
60    RateName$(4) = "CHF": Rate(4) = 1.1148
70    Loaded = -1
80    Exit Sub
100   WriteLog "Rates: error " & Err.Number & " in line " & Erl
110   Resume Next
End Sub

'##SUMMARY Turns an amount of a foreign currency into pounds.
'##PARAM Amount The amount.
'##PARAM Symbol$ The currency, as its three letters.
'##RETURNS The pounds, rounded to the penny; 0 for a currency without a rate.
Function ToPounds@(ByVal Amount@, Symbol$)
10    LoadRates
20    GoSub FindRate
30    If Found = 0 Then ToPounds@ = 0: Exit Function
40    ToPounds@ = Int(Amount@ / Rate(Found) * 100 + 0.5) / 100
50    Exit Function

FindRate:
60    Found = 0
70    For I = 1 To NUMBEROFRATES
80      If UCase$(Symbol$) = RateName$(I) Then Found = I
90    Next I
      Return
End Function
