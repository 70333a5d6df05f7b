// The array arguments of DbfReplace, DbfUpdate and DbfIndex in every form that JScript can write.
Probe.DbfReplace(["A", 1]);
same(Last, "DbfReplace(['A', 1])", "DbfReplace: a JScript array");
var a = ["A", 1, "B", 2];
Probe.DbfReplace(a);
same(Last, "DbfReplace(['A', 1, 'B', 2])", "DbfReplace: a JScript array in a variable");
Probe.DbfReplace(new Array("A", 1));
same(Last, "DbfReplace(['A', 1])", "DbfReplace: an array made by its constructor");
a = [];
a.push("A");
a.push(5);
Probe.DbfReplace(a);
same(Last, "DbfReplace(['A', 5])", "DbfReplace: an array that has grown");
Probe.DbfReplace("NAME", "x", "AGE", 3);
same(Last, "DbfReplace(['NAME', 'x', 'AGE', 3])", "DbfReplace: the plain list of values");
Probe.DbfReplace(ArrayOfTexts);
same(Last, "DbfReplace(['NAME', 'x'])", "DbfReplace: an array of texts of another program");
Probe.DbfReplace(ArrayOfLongs);
same(Last, "DbfReplace([1, 2])", "DbfReplace: an array of Longs of another program");
Probe.DbfReplace([]);
same(Last, "DbfReplace([])", "DbfReplace: an empty array");
Probe.DbfReplace(["A", null, "B", true, "C", 1.5]);
same(Last, "DbfReplace(['A', Null, 'B', True, 'C', 1.5])", "DbfReplace: special values stay what they are");
same(Probe.DbfReplace(["A", 1]), "answer", "DbfReplace: used for its result");

Probe.DbfUpdate("t", "k", ["A", 1]);
same(Last, "DbfUpdate('t', 'k', ['A', 1])", "DbfUpdate: a JScript array");
Probe.DbfUpdate("t", 5, "A", 1, "B", 2);
same(Last, "DbfUpdate('t', 5, ['A', 1, 'B', 2])", "DbfUpdate: the plain list of values");
Probe.DbfUpdate("t", "k", ArrayOfTexts);
same(Last, "DbfUpdate('t', 'k', ['NAME', 'x'])", "DbfUpdate: an array of texts of another program");
ok(Probe.DbfUpdate("t", "k", ["A", 1]), "DbfUpdate: used for its result");

Probe.DbfIndex("t", ["NAME", true]);
same(Last, "DbfIndex('t', ['NAME', True])", "DbfIndex: a JScript array");
Probe.DbfIndex("t", "NAME", true, "CITY");
same(Last, "DbfIndex('t', ['NAME', True, 'CITY'])", "DbfIndex: the plain list of values");
Probe.DbfIndex("t", "NAME");
same(Last, "DbfIndex('t', ['NAME'])", "DbfIndex: a single value");
Probe.DbfIndex("t", ArrayOfTexts);
same(Last, "DbfIndex('t', ['NAME', 'x'])", "DbfIndex: an array of texts of another program");

finish();
