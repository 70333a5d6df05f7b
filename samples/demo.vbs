' A tour: open, count, select, look up, walk, index order; then, on copies in FOLDER\demo-copies, change records and take a
' text file in, index it, look up and export. Run by ./zu demo on the sample tables, or
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

Dim files, copies, before, after, processed
Set files = CreateObject("Scripting.FileSystemObject")
copies = files.BuildPath(folder, "demo-copies")
If files.FolderExists(copies) Then files.DeleteFolder copies, True
files.CreateFolder copies

Heading "Change records, on a copy"
DbfToDbf orders, copies & ">orders"
Echo Plain(DbfCount(copies & ">orders"), 9) & " orders copied, with their notes and indexes"
Took "a copy of a whole table"
' DbfProcess calls the routine Discount, below, for each record that meets the condition.
before = 0
after = 0
processed = DbfProcess(copies & ">orders", "Discount", "NOT PAID AND AMOUNT > 9000", , , 10)
Echo Plain(processed, 9) & " large orders got a discount of 10 percent:" & Money(before, 16) & " before," & _
     Money(after, 16) & " after"
Took "a routine of this script for each of " & processed & " records"

Heading "A text file: in, index, look up, out"
Dim text, fields, service, imported, rows, added, failed, selected
fields = "ID,CUSTOMER,COUNTRY,ORDERED,GOODS,AMOUNT,PAID"
text = files.BuildPath(copies, "orders.del")
DbfToDel orders, text, , fields
Echo Plain(files.GetFile(text).Size, 9) & " bytes of text, seven fields of all orders, the first line:"
Echo "           " & files.OpenTextFile(text).ReadLine
Took "export"
' An empty table with the fields of the orders.
Set service = Engine.DatabaseService
service.CreateTable "DBF|" & copies, "imported", service.OpenTable("DBF|" & folder, "orders").Layout, Nothing
imported = copies & ">imported"
DbfFromDel imported, text, , fields, , rows, added, failed
Echo Plain(rows, 9) & " lines read, " & added & " records added"
Took "import"
If DbfIndex(imported, Array("CUSTOMER", "ORDERED")) Then Echo Plain(DbfCount(imported), 9) & " records in order of customer and day"
Took "index"
Set view = DbfLookup(imported, "CUSTOMER = 4711")
view.MoveFirst
If Not view.Eof Then
    Echo "  customer 4711 ordered first on " & Day10(view("ORDERED").Value) & ": " & view("GOODS").Value & ", " & _
         FormatNumber(view("AMOUNT").Value, 2)
End If
Took "one lookup"
selected = files.BuildPath(copies, "unpaid.del")
DbfToDel imported, selected, "NOT PAID AND COUNTRY = 'SE'", "ID,CUSTOMER,ORDERED,AMOUNT"
Echo Plain(LinesOf(selected), 9) & " unpaid orders from Sweden, the first line:"
Echo "           " & files.OpenTextFile(selected).ReadLine
Took "export of four fields by condition"

Echo ""
Echo "This was samples/demo.vbs: change a condition in it and run it again. Next: ./zu run samples/count.vbs build/demo/orders ""AMOUNT > 100"""

Function Discount(percent)
    Dim price, reduced
    price = DbfFieldValue(Engine.CurrentView("AMOUNT"))
    reduced = Round(price * (100 - percent) / 100, 2)
    before = before + price
    after = after + reduced
    ' True goes on with the next record.
    Discount = DbfReplace("AMOUNT", reduced) = True
End Function

Sub Heading(title)
    Echo ""
    Echo title
    Echo String(Len(title), "-")
    started = Timer
End Sub

' The time since the heading or the step before.
Sub Took(what)
    Echo "  [" & FormatNumber((Timer - started) * 1000, 0) & " ms: " & what & "]"
    started = Timer
End Sub

Function LinesOf(file)
    LinesOf = UBound(Split(files.OpenTextFile(file).ReadAll, vbCrLf))
End Function

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
