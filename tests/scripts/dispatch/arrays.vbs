' The array arguments of DbfReplace, DbfUpdate and DbfIndex in every form that VBScript can write.
Option Explicit

Dim a, b, fixed(1), nested, name, grown

Probe.DbfReplace Array("A", 1)
same Last, "DbfReplace(['A', 1])", "DbfReplace: an array made on the spot"
a = Array("A", 1)
Probe.DbfReplace a
same Last, "DbfReplace(['A', 1])", "DbfReplace: an array in a variable"
Probe.DbfReplace (a)
same Last, "DbfReplace(['A', 1])", "DbfReplace: an array by value"
fixed(0) = "A"
fixed(1) = 2
Probe.DbfReplace fixed
same Last, "DbfReplace(['A', 2])", "DbfReplace: an array of fixed size"
ReDim grown(3)
grown(0) = "A" : grown(1) = 1 : grown(2) = "B" : grown(3) = 2
Probe.DbfReplace grown
same Last, "DbfReplace(['A', 1, 'B', 2])", "DbfReplace: an array that has grown"
Probe.DbfReplace "NAME", "x", "AGE", 3
same Last, "DbfReplace(['NAME', 'x', 'AGE', 3])", "DbfReplace: the plain list of values"
name = "NAME"
b = 3
Probe.DbfReplace name, "x", "AGE", b
same Last, "DbfReplace(['NAME', 'x', 'AGE', 3])", "DbfReplace: a plain list with variables"
Probe.DbfReplace ArrayOfTexts
same Last, "DbfReplace(['NAME', 'x'])", "DbfReplace: an array of texts"
Probe.DbfReplace ArrayOfLongs
same Last, "DbfReplace([1, 2])", "DbfReplace: an array of Longs"
a = ArrayOfTexts
Probe.DbfReplace a
same Last, "DbfReplace(['NAME', 'x'])", "DbfReplace: an array of texts in a variable"
Probe.DbfReplace Array()
same Last, "DbfReplace([])", "DbfReplace: an empty array"
Probe.DbfReplace Array("A", Null, "B", Empty, "C", True)
same Last, "DbfReplace(['A', Null, 'B', Empty, 'C', True])", "DbfReplace: special values stay what they are"
nested = Array("A", Array(1, 2))
Probe.DbfReplace nested
same Last, "DbfReplace(['A', [1, 2]])", "DbfReplace: an array in an array stays one value"
same Probe.DbfReplace(Array("A", 1)), "answer", "DbfReplace: used for its result"
same Probe.DbfReplace("A", 1), "answer", "DbfReplace: the plain list used for its result"

Probe.DbfUpdate "t", "k", Array("A", 1)
same Last, "DbfUpdate('t', 'k', ['A', 1])", "DbfUpdate: an array made on the spot"
a = Array("A", 1)
b = "k"
Probe.DbfUpdate "t", b, a
same Last, "DbfUpdate('t', 'k', ['A', 1])", "DbfUpdate: an array in a variable"
Probe.DbfUpdate "t", 5, "A", 1, "B", 2
same Last, "DbfUpdate('t', 5, ['A', 1, 'B', 2])", "DbfUpdate: the plain list of values"
Probe.DbfUpdate "t", Array(1, True), fixed
same Last, "DbfUpdate('t', [1, True], ['A', 2])", "DbfUpdate: a key that is an array too"
Probe.DbfUpdate "t", "k", ArrayOfTexts
same Last, "DbfUpdate('t', 'k', ['NAME', 'x'])", "DbfUpdate: an array of texts"
Probe.DbfUpdate "t", "k", (a)
same Last, "DbfUpdate('t', 'k', ['A', 1])", "DbfUpdate: an array by value"
ok Probe.DbfUpdate("t", "k", a), "DbfUpdate: used for its result"

Probe.DbfIndex "t", Array("NAME", True)
same Last, "DbfIndex('t', ['NAME', True])", "DbfIndex: an array made on the spot"
a = Array("NAME", "CITY")
Probe.DbfIndex "t", a
same Last, "DbfIndex('t', ['NAME', 'CITY'])", "DbfIndex: an array in a variable"
Probe.DbfIndex "t", "NAME", True, "CITY"
same Last, "DbfIndex('t', ['NAME', True, 'CITY'])", "DbfIndex: the plain list of values"
Probe.DbfIndex "t", "NAME"
same Last, "DbfIndex('t', ['NAME'])", "DbfIndex: a single value"
Probe.DbfIndex "t", ArrayOfTexts
same Last, "DbfIndex('t', ['NAME', 'x'])", "DbfIndex: an array of texts"
Probe.DbfIndex Array("DBF", "x", "y"), (a)
same Last, "DbfIndex(['DBF', 'x', 'y'], ['NAME', 'CITY'])", "DbfIndex: definition and fields as arrays"

finish
