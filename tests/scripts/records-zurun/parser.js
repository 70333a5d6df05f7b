// ZuParser.Parser from JScript, whose handlers answer by their result.
var parser = WScript.CreateObject("ZuParser.Parser", "parser_");
var faults = [];
function parser_ProvideValue(name) {
    if (name === "PRICE") return 20;
    if (name === "CITY") return "Lund";
}
function parser_SyntaxError(number, text) { faults.push(number); }

parser.Formula = "PRICE * 3";
same(parser.Evaluate(), 60, "a handler's result is the value of the name");
parser.Formula = "CITY = 'Lund' AND PRICE IN (10, 20)";
same(parser.Evaluate(), true, "for every name");
parser.Formula = "PRICE = = 1";
same(faults.length, 1, "a fault is told when the text is put");
var failed = false;
try { parser.Evaluate(); } catch (error) { failed = true; }
ok(failed, "and evaluating fails");
same(faults.length, 1, "without telling it again");
finish();
