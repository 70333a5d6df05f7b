// Keeps a table tidy: deletes what is not wanted any more, removes it for good, builds the index anew.
//   ./zu run samples/tidy.js TABLE CONDITION FIELD      e.g. build/demo/customers "NOT ACTIVE AND CREDIT = 0" ID
if (Args.Count < 3) {
    Echo("tidy.js TABLE CONDITION FIELD");
    Quit(64);
}
var table = Args(0);
var condition = Args(1);
var before = DbfCount(table);

// A text with = < > or ( is a condition; 0 takes away the limit of one record.
var deleted = /[=<>(]/.test(condition) ? DbfDelete(table, condition, true, 0) : DbfDelete(table, "(" + condition + ")", true, 0);
Echo(deleted + " of " + before + " records deleted");
if (!DbfCleanup(table)) {
    Echo("not cleaned up: " + Engine.LastError);
    Quit(1);
}
if (!DbfIndex(table, Args(2))) {
    Echo("not indexed: " + Engine.LastError);
    Quit(1);
}
Echo(DbfCount(table) + " records left, in order of " + Args(2));
