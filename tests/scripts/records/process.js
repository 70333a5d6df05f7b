// DbfProcess and DbfReplace from JScript.
var f = new ActiveXObject("ZuDBFFunctions.Functions");
var project = new ActiveXObject("Zuengine.Zuproject");
var table = fact("scratch") + ">customers";
var seen = [];

var routines = {
    Mark: function (city) {
        seen.push(f.DbfRecNo());
        return f.DbfReplace(["CITY", city, "ACTIVE", false]);
    },
    MarkPlainly: function () { return f.DbfReplace("CITY", "Plain", "SINCE", "2020-02-29"); },
    Empty: function () { seen.push(typeof f.DbfReplace(["CITY", "x", "NAME"])); }
};
project.RoutineHolder = routines;

same(f.DbfProcess(table, "Mark", "ID = 3 OR ID = 4", null, 0, "Marked"), 2, "DbfProcess answers how many records were processed");
same(seen.join(","), "3,4", "the routine knows each record's number");
same(f.DbfCount(table, "CITY = 'Marked' AND NOT ACTIVE"), 2, "a list of pairs is stored");
same(f.DbfProcess(table, "MarkPlainly", "ID = 3"), 1, "pairs may be plain arguments");
same(f.DbfCount(table, "CITY = 'Plain' AND SINCE = {2020-02-29}"), 1, "with a date");
seen = [];
same(f.DbfProcess(table, "Empty", "ID = 3"), 1, "a routine that answers nothing goes on");
same(seen.join(), "undefined", "incomplete pairs answer nothing");
var credit = f.DbfFieldValue(f.DbfLookup(table, 3)("CREDIT"));
same(typeof credit, "number", "DbfFieldValue hands decimals out as numbers");
ok(credit + 1 > credit, "that can be calculated with");
project.RoutineHolder = null;
finish();
