// The functions that read, on real tables, as JScript calls them.
var f = new ActiveXObject("ZuDBFFunctions.Functions");
var tables = fact("tables");
var customers = tables + ">customers";
var orders = tables + ">orders";

var table = f.DbfOpen(customers);
ok(table !== null, "DbfOpen opens a table");
ok(f.DbfOpen(tables + ">nosuch") === null, "DbfOpen of a missing table answers null");
ok(table.OpenIndex("NAME"), "OpenIndex finds a tag");
ok(!table.OpenIndex("NOSUCH"), "OpenIndex of an unknown tag answers false");

same(f.DbfCount(customers), fact("customers"), "DbfCount counts the whole table");
same(f.DbfCount(customers, "COUNTRY = 'SE'"), fact("swedish"), "DbfCount counts by condition");
same(f.DbfCount(tables + ">nosuch"), -1, "DbfCount of a missing table is -1");

var view = f.DbfSelect(customers, "COUNTRY = 'SE'", "ID,COUNTRY");
same(view.RecordCount, fact("swedish"), "DbfSelect selects by condition");
var sum = 0, count = 0;
for (view.MoveFirst(); !view.Eof; view.MoveNext()) {
    sum += Number(view("ID").Value);
    count++;
}
same(count, fact("swedish"), "a walk meets every record");
same(sum, fact("swedishIdSum"), "and reads the right values");
same(f.DbfSelect(customers, "", ["NAME", "CITY", "ID"], 1).Fields(2).Name, "ID", "FieldNames may be a JScript array of names");
same(f.DbfSelect(customers, "", [1, 0], 1).Fields(0).Name, "NAME", "FieldNames may be a JScript array of numbers");
same(f.DbfSelect(customers, "", "", 5).RecordCount, 5, "MaxRecords limits the selection");
ok(f.DbfSelect(customers, "NOSUCHFIELD = 1") === null, "an unknown field in the condition gives no view");

view = f.DbfSelect(customers, "", "", 1);
view.MoveFirst();
same(view("ID").Value, fact("firstId"), "view(name).Value reads a field");
same(view.Fields("NAME").Value, fact("firstName"), "texts come without trailing blanks");
var names = "";
for (var walk = new Enumerator(view.Fields); !walk.atEnd(); walk.moveNext()) names += walk.item().Name + " ";
same(names, "ID NAME CONTACT STREET POSTCODE CITY COUNTRY SINCE CREDIT ACTIVE ", "an Enumerator walks over the fields");
same(typeof view("NAME").Value, "string", "a text is a string");
same(typeof view("ACTIVE").Value, "boolean", "a truth value is a boolean");
ok(view("CREDIT").Value >= 0, "a decimal compares as a number");
same(view("ID").Value + 1, Number(fact("firstId")) + 1, "a decimal adds as a number");

view = f.DbfSelect(customers, "COUNTRY = 'SE'", "", 2);
view.MoveFirst();
ok(f.DbfTop(view), "DbfTop on the first record");
view.MoveNext();
ok(f.DbfBottom(view), "DbfBottom on the last record");
same(f.DbfRecNo(view), view("##RECNO").Value, "DbfRecNo is the record's number in the table");

view = f.DbfLookup(customers, Number(fact("lastId")));
same(view.RecordCount, 1, "DbfLookup finds a key of the default index");
same(view("ID").Value, fact("lastId"), "and it is the right record");
same(f.DbfLookup(customers, "CREDIT >= " + fact("richest")).RecordCount, 1, "a key with a comparison is a condition");

finish();
