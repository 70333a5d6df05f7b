// What zurun gives a JScript without any object or prefix.
var customers = fact("tables") + ">customers";

ok(Args.Count > 5, "Args counts the arguments");
same(Args(0), "tables=" + fact("tables"), "Args(i) is an argument");
same(Args.length, Args.Count, "length is the count too");
var count = 0;
for (var walk = new Enumerator(Args); !walk.atEnd(); walk.moveNext()) count++;
same(count, Args.Count, "an Enumerator walks over the arguments");

same(DbfCount(customers), fact("customers"), "a function without a prefix");
same(Functions.DbfCount(customers), fact("customers"), "the same function through Functions");
same(DbfSelect(customers, "COUNTRY = 'SE'").RecordCount, fact("swedish"), "a function that answers an object");
same(DateMask_Custom, -1, "constants of the type library: DateMask_Custom");
same(UseParentheses, 2, "constants of the type library: UseParentheses");
ok(Engine.Version.length > 0, "Engine is the project object");

var seen = 0;
function forEach(step) {
    seen += step;
    return true;
}
same(DbfOpen(customers).Process("forEach", "COUNTRY = 'SE'", "", 6, 2), 6, "Process finds the script's own function");
same(seen, 12, "and calls it for each record");

finish();
