// Objects by reference as JScript passes them.
var customers = fact("tables") + ">customers";
var view = DbfSelect(customers, "", "", 3);
var record = DbfVarDeclare(customers);
var control = new ActiveXObject("ZuDBFFunctions.ZuDbfControl");

Probe.DbfTop(view);
same(Last, "DbfTop(view)", "a view");
Probe.DbfVarReset(record);
same(Last, "DbfVarReset(view)", "an object parameter");
Probe.DbfFieldValue(view("ID"));
same(Last, "DbfFieldValue(field)", "a field from its view");
Probe.DbfFieldValue(view.Fields(0));
same(Last, "DbfFieldValue(field)", "a field from the collection");
Probe.DbfAddNew("t", record);
same(Last, "DbfAddNew('t', view)", "DbfAddNew with a record variable");
Probe.DbfToDel("s", "file", "c", "f", 0, control);
same(Last, "DbfToDel('s', 'file', 'c', 'f', 0, control)", "a control");
Probe.DbfFieldValue(null);
same(Last, "DbfFieldValue(Nothing)", "null for an object");
Probe.DbfSelect("t", "c", "f", "5");
same(Last, "DbfSelect('t', 'c', 'f', 5)", "a text that is a number becomes one");
Probe.DbfDelete("t", "k", 0, 2.0);
same(Last, "DbfDelete('t', 'k', False, 2)", "a number becomes a truth value");
Probe.DbfOpen(null);
same(Last, "DbfOpen(Null)", "null stays Null");

function refused(call) {
    try {
        call();
        return false;
    } catch (error) {
        return true;
    }
}
ok(refused(function () { Probe.DbfOpen("a", "b"); }), "too many arguments are refused");
ok(refused(function () { Probe.DbfCleanup(); }), "a missing argument is refused");
ok(refused(function () { Probe.DbfSelect("t", "c", "f", "five"); }), "a text that is no number is refused");
ok(refused(function () { Probe.DbfVarReset("text"); }), "a text for an object is refused");

finish();
