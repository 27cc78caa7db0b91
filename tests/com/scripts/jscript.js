// What JScript does differently: objects by ActiveXObject, numbers that are 64-bit floats, no by-reference variables,
// and objects of its own that serve as collections.
var failures = 0;
function check(what, actual, expected) {
    if (actual === expected) return;
    failures++;
    WScript.Echo(what + " gave " + actual + " (" + typeof actual + "), not " + expected);
}

var s = new ActiveXObject("TarnCom32.StringFunctions");
check("names without regard to case", s.reversestring("abc"), "cba");
check("a float for a number", s.ReturnStringAfterNthDelimiter("a,b,c", ",", 2.0), ",c");
check("a number for a text", s.ReverseString(123), "321");
check("undefined for a variant", s.IsBlank(undefined), true);

var c = s.CreateCollectionFromString("one!1;two!2");
var all = "";
for (var walk = new Enumerator(c); !walk.atEnd(); walk.moveNext()) all += walk.item();
check("Enumerator", all, "12");
try {
    c.Item("three");
    check("a key that is not there", "nothing", "an error");
} catch (error) {
    check("the number of an error", error.number & 0xFFFF, 5);
}

var visio = WScript.CreateObject("TarnVisioStandIn.Application");
var group = visio.Documents.Add("").Pages.Item(1).DrawRectangle(0, 0, 2, 2);
group.ConvertToGroup();
group.DrawRectangle(0, 0, 1, 1);
var own = { names: "", Add: function (shape) { this.names += shape.NameID + " "; } };
var functions = new ActiveXObject("TarnCom32.VisioFunctions");
functions.GetAllTheShapesFromThePage(group.Parent, own, true, false, "");
check("a walk into an object of the script", own.names, "Sheet.1 Sheet.2 ");
visio.Quit();

if (failures === 0) WScript.Echo("all checks passed");
