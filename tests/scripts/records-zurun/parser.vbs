' ZuParser.Parser: expressions whose names the script supplies.
Option Explicit
Dim p, asked, faults
Set p = WScript.CreateObject("ZuParser.Parser", "p_")

Sub p_ProvideValue(name, value)
    asked = asked & name & " "
    Select Case UCase(name)
        Case "PRICE": value = 20
        Case "CITY": value = "Malmö"
        Case "DAY": value = DateSerial(2026, 11, 21)
        Case "NOTHING": value = Null
        Case "PAID": value = True
    End Select
End Sub

Sub p_SyntaxError(number, text)
    faults = faults & number & ": " & text & "|"
End Sub

Function evaluated(formula)
    p.Formula = formula
    On Error Resume Next
    evaluated = p.Evaluate
    If Err.Number <> 0 Then evaluated = "error " & Hex(Err.Number)
End Function

same evaluated("1 + 2 * 3"), 7, "a formula without names"
same evaluated("Price * 2"), 40, "a name is asked for"
same asked, "Price ", "as it is written"
same evaluated("CITY LIKE 'mal%' OR CITY = 'Malmö'"), True, "texts"
same evaluated("Day + 1"), DateSerial(2026, 11, 22), "dates"
same evaluated("Paid AND Price > 10"), True, "truth values"
ok IsNull(p_null()), "Null stays Null"
same evaluated(" "), True, "a blank formula is true"
same p.Formula, " ", "the text can be read back"

faults = ""
same evaluated("1 +"), "error 80041017", "a fault fails"
ok Left(faults, 3) = "4: ", "and is told with its position"
same UBound(Split(faults, "|")), 1, "once"
faults = ""
same evaluated("UNKNOWN = 1"), "error 80041017", "an unknown name is a fault"
ok InStr(faults, "UNKNOWN") > 0, "that names it"

Function p_null()
    p.Formula = "NOTHING"
    p_null = p.Evaluate
End Function

WScript.DisconnectObject p
same evaluated("Price"), "error 80041017", "without a client no name is known"
finish
