// The same from JScript.
var table = fact("scratch") + ">customers";
var calls = 0;
function Correct(city) {
    calls++;
    return DbfReplace(["CITY", city]);
}
function Walk() { calls++; }
function Outer() { return DbfProcess(table, "Correct", "ID = 9", null, 0, "inner") === 1 && DbfReplace("CITY", "outer"); }

same(DbfProcess(table, "Correct", "ID = 5 OR ID = 6", null, 0, "Corrected"), 2, "routines of the script are called by name");
same(DbfCount(table, "CITY = 'Corrected'"), 2, "and replace values");
calls = 0;
same(DbfProcess(table, "Walk", "", null, 50), 50, "a function without an answer goes on with every record");
same(calls, 50, "once each");
same(DbfProcess(table, "Outer", "ID = 1 OR ID = 2"), 2, "routines may process");
same(DbfCount(table, "CITY = 'inner'") + " " + DbfCount(table, "CITY = 'outer'"), "1 2", "inside one another");
finish();
