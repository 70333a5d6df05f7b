' Corrects prices record by record: large orders that are not paid yet get a discount.
'   ./zu run samples/prices.vbs FOLDER [PERCENT]      FOLDER holds orders.dbf; it is changed
Option Explicit
If Args.Count = 0 Then
    Echo "prices.vbs FOLDER [PERCENT]"
    Quit 64
End If

Dim orders, percent, processed, before, after
orders = Args(0) & ">orders"
percent = 10
If Args.Count > 1 Then percent = CDbl(Args(1))
before = 0
after = 0

' DbfProcess calls the routine once for each record that meets the condition.
processed = DbfProcess(orders, "Discount", "NOT PAID AND AMOUNT > 9000", , , percent)
Echo processed & " orders, " & FormatNumber(before, 2) & " before, " & FormatNumber(after, 2) & " after"

Function Discount(howMuch)
    Dim amount, reduced
    amount = DbfFieldValue(Engine.CurrentView("AMOUNT"))
    reduced = Round(amount * (100 - howMuch) / 100, 2)
    before = before + amount
    after = after + reduced
    ' True goes on with the next record; a record that cannot be saved ends the run.
    Discount = DbfReplace("AMOUNT", reduced, "NOTE", "discount of " & howMuch & " percent") = True
End Function
