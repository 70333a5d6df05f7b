' A first script. Run it: ./zu run samples/first.vbs build/demo    (make the tables first: ./zu demo)
Option Explicit
Dim table, view
table = Args(0) & ">orders"
Echo DbfCount(table) & " orders, " & DbfCount(table, "NOT PAID") & " of them not paid"
Set view = DbfSelect(table, "AMOUNT > 9500")
Do Until view.Eof
    Echo view("ID").Value & " " & view("GOODS").Value & " " & view("AMOUNT").Value
    view.MoveNext
Loop
