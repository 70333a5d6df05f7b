' A tour of reading: open, count, select, look up, walk, index order. Run by ./zu demo on the sample tables, or
'   zurun demo.vbs FOLDER        FOLDER holds customers.dbf and orders.dbf, made by zugenerate
Option Explicit

Dim folder, orders, customers
folder = "."
If Args.Count > 0 Then folder = Args(0)
orders = folder & ">orders"          ' a table definition: folder > table
customers = folder & ">customers"

Dim started
Heading "Open and count"
Dim table
Set table = DbfOpen(orders)
If table Is Nothing Then
    Echo "There is no table orders in " & folder & ". Make the sample tables first: zugenerate FOLDER"
    Quit 1
End If
Echo Plain(DbfCount(customers), 9) & " customers"
Echo Plain(DbfCount(orders), 9) & " orders"
Took "two counts of whole tables"

Heading "Count by condition"
Dim condition
condition = "COUNTRY = 'SE' AND AMOUNT > 4000"
Echo Plain(DbfCount(orders, condition), 9) & " orders meet   " & condition
condition = "YEAR(ORDERED) = 2025 AND NOT PAID"
Echo Plain(DbfCount(orders, condition), 9) & " orders meet   " & condition
condition = "UPPER(NOTE) LIKE '%FRAGILE%'"
Echo Plain(DbfCount(orders, condition), 9) & " orders meet   " & condition
Took "three counts by condition, the last one through the notes of the memo file"

Heading "Select by condition, look up the customer by key"
Dim view, customer
Set view = DbfSelect(orders, "NOT PAID AND AMOUNT > 9000 AND SHIPPED IS NOT NULL")
Echo view.RecordCount & " large orders were sent and are not paid yet; the first of them:"
Echo ""
Echo "   order  ordered         amount  customer"
Dim shown
shown = 0
view.MoveFirst
Do Until view.Eof Or shown = 6
    ' A value without = < > ( is a key of the default index: here the customer number.
    Set customer = DbfLookup(customers, view("CUSTOMER").Value)
    Echo Plain(view("ID").Value, 8) & "  " & Day10(view("ORDERED").Value) & Money(view("AMOUNT").Value, 12) & _
         "  " & CustomerName(customer)
    shown = shown + 1
    view.MoveNext
Loop
Took "one selection, " & shown & " lookups by key"

Heading "Look up by condition"
Set view = DbfLookup(customers, "CITY = 'Göteborg' AND CREDIT > 400000", , , 4)
view.MoveFirst
Do Until view.Eof
    Echo "  " & Left(view("NAME").Value & Space(34), 34) & Money(view("CREDIT").Value, 14) & "  " & view("CONTACT").Value
    view.MoveNext
Loop
Took "at most four customers of one city"

Heading "Walk all records"
Dim country, totals, counts, code
Set totals = CreateObject("Scripting.Dictionary")
Set counts = CreateObject("Scripting.Dictionary")
Set view = DbfSelect(orders, "", "COUNTRY,AMOUNT")
Dim amount
Set country = view("COUNTRY")        ' a field object follows the view from record to record
Set amount = view("AMOUNT")
view.MoveFirst
Do Until view.Eof
    code = country.Value
    totals(code) = totals(code) + CDbl(amount.Value)
    counts(code) = counts(code) + 1
    view.MoveNext
Loop
For Each code In totals.Keys
    Echo "  " & code & Plain(counts(code), 9) & " orders" & Money(totals(code), 18)
Next
Took "a walk over " & view.RecordCount & " records in the script"

Heading "Index order"
If table.OpenIndex("LATEST") Then
    Set view = table.Filter("", 3)
    view.MoveFirst
    Do Until view.Eof
        Echo "  " & Day10(view("ORDERED").Value) & Plain(view("ID").Value, 8) & "  " & view("GOODS").Value
        view.MoveNext
    Loop
End If
Took "the three latest orders, through the tag LATEST"

Echo ""
Echo "This was samples/demo.vbs: change a condition in it and run it again. Next: ./zu run samples/count.vbs build/demo/orders ""AMOUNT > 100"""

Sub Heading(text)
    Echo ""
    Echo text
    Echo String(Len(text), "-")
    started = Timer
End Sub

Sub Took(what)
    Echo "  [" & FormatNumber((Timer - started) * 1000, 0) & " ms: " & what & "]"
End Sub

Function CustomerName(view)
    CustomerName = "(deleted)"
    If Not view Is Nothing Then
        If view.RecordCount > 0 Then CustomerName = view("NAME").Value & ", " & view("CITY").Value
    End If
End Function

Function Plain(number, width)
    Plain = Right(Space(width) & CStr(number), width)
End Function

Function Money(number, width)
    Money = Right(Space(width) & FormatNumber(number, 2), width)
End Function

Function Day10(value)
    Day10 = "-         "
    If Not IsNull(value) Then
        Day10 = Year(value) & "-" & Right("0" & Month(value), 2) & "-" & Right("0" & Day(value), 2)
    End If
End Function
