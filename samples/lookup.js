// Looks up a customer by number or by condition, and lists the customer's orders:
//   ./zu run samples/lookup.js build/demo 4711
//   ./zu run samples/lookup.js build/demo "NAME LIKE 'Lantern%' AND CITY = 'Malmö'"
var folder = Args(0);
var wanted = Args.Count > 1 ? Args(1) : "1";

var customer = DbfLookup(folder + ">customers", wanted);
if (!customer || customer.RecordCount == 0) {
    Echo("no such customer: " + wanted);
    Quit(1);
}
var id = customer("ID").Value;
Echo(customer("NAME").Value + ", " + customer("CITY").Value + " (customer " + id + ")");

var orders = DbfSelect(folder + ">orders", "CUSTOMER = " + id, "ID,GOODS,AMOUNT,NOTE");
for (; !orders.Eof; orders.MoveNext()) {
    Echo("  " + orders("ID").Value + "  " + orders("GOODS").Value + "  " + orders("AMOUNT").Value);
    if (orders("NOTE").Value) Echo("      " + orders("NOTE").Value.split("\r\n").join("\n      "));
}
