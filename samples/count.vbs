' Counts the records of a table, all or those that meet a condition:
'   ./zu run samples/count.vbs TABLE [CONDITION]      e.g. build/demo/orders "PAID AND AMOUNT > 100"
Option Explicit
If Args.Count = 0 Then
    Echo "count.vbs TABLE [CONDITION]"
    Quit 64
End If

Dim condition, number
condition = ""
If Args.Count > 1 Then condition = Args(1)
number = DbfCount(Args(0), condition)
If number < 0 Then
    Echo "not counted: " & Engine.LastError
    Quit 1
End If
Echo number
