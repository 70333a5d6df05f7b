' Fields without a value.
Option Explicit

Dim f, orders, view, count
Set f = CreateObject("ZuDBFFunctions.Functions")
orders = fact("tables") & ">orders"

same f.DbfCount(orders, "SHIPPED IS NULL"), fact("unshipped"), "a blank date is Null in conditions"
same f.DbfCount(orders, "DISCOUNT IS NULL"), fact("discountNull"), "a real Null is Null in conditions"

Set view = f.DbfSelect(orders, "ID = " & fact("unshippedId"))
same view.RecordCount, 1, "an order that is not shipped is found"
ok IsNull(view("SHIPPED").Value), "its date of shipping is Null"
ok Not IsNull(f.DbfFieldValue(view("SHIPPED"))), "DbfFieldValue replaces Null"
same CDbl(f.DbfFieldValue(view("SHIPPED"))), 0, "by the date with number 0"
same VarType(f.DbfFieldValue(view("SHIPPED"))), 7, "which is a date"
same f.DbfFieldValue(view("ID")), fact("unshippedId"), "DbfFieldValue leaves other values as they are"

Set view = f.DbfSelect(orders, "DISCOUNT IS NULL", "", 1)
ok IsNull(view("DISCOUNT").Value), "a number field can be Null"
same f.DbfFieldValue(view("DISCOUNT")), 0, "which DbfFieldValue replaces by 0"

finish
