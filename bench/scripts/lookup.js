// lookup.js TIMES TABLE RECORDS COUNT: COUNT lookups by key, TIMES times; prints the sum of a field.
var sum = 0;
for (var turn = 0; turn < Number(Args(0)); turn++) {
    sum = 0;
    var key = 1;
    for (var number = 0; number < Number(Args(3)); number++) {
        key = (key - 1 + 7919) % Number(Args(2)) + 1;
        var view = DbfLookup(Args(1), key);
        if (view.RecordCount > 0) sum += Number(view("QTY").Value);
    }
}
Echo(sum);
