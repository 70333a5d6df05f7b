
' ---- assertions ----
Dim okPassed, okFailed

Sub ok(condition, statement)
    Dim held
    held = False
    ' Null and objects are no truth values: they count as failed, not as an error of the test.
    On Error Resume Next
    held = CBool(condition)
    On Error Goto 0
    If held Then
        okPassed = okPassed + 1
        WScript.Echo "ok " & statement
    Else
        okFailed = okFailed + 1
        WScript.Echo "not ok " & statement
    End If
End Sub

Sub same(actual, expected, statement)
    If CStr(actual) = CStr(expected) And VarType(actual) <> 1 Then
        ok True, statement
    Else
        ok False, statement & " (is """ & actual & """, expected """ & expected & """)"
    End If
End Sub

' An argument of the form name=value.
Function fact(name)
    Dim argument, i
    fact = "(no fact " & name & ")"
    For i = 0 To WScript.Arguments.Count - 1
        argument = WScript.Arguments(i)
        If Left(argument, Len(name) + 1) = name & "=" Then fact = Mid(argument, Len(name) + 2)
    Next
End Function

Sub finish()
    Dim closing
    closing = CStr(okPassed + 0) & " passed, " & CStr(okFailed + 0) & " failed"
    WScript.Echo closing
End Sub
