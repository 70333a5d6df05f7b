' bare.vbs TIMES TABLE RECORDS COUNT: the calls that a lookup makes, all of them cheap here: what a script pays for calling.
Option Explicit
Dim turn, number, key, view, count, table, sum, quantity
table = Args(1)
For turn = 1 To CLng(Args(0))
    Set view = DbfVarDeclare(table)
    key = 1
    For number = 1 To CLng(Args(3))
        key = NextKey(key, CLng(Args(2)))
        quantity = Descend(key, "")
        If view.RecordCount > 0 Then sum = sum + view("QTY").Size
    Next
Next
Echo sum

Function NextKey(last, records)
    NextKey = (last - 1 + 7919) Mod records + 1
End Function
