// A walk into a collection of the script's own: whatever has an Add serves.
var failures = 0;
function check(what, actual, expected) {
    if (actual === expected) return;
    failures++;
    WScript.Echo(what + " gave " + actual + ", not " + expected);
}

var visio = WScript.CreateObject("TarnVisioStandIn.Application");
var page = visio.Documents.Add("").Pages.Item(1);
var group = page.DrawRectangle(0, 0, 2, 2);
group.ConvertToGroup();
group.DrawRectangle(0, 0, 1, 1);

var own = { names: "", Add: function (shape) { this.names += shape.NameID + " "; } };
var functions = WScript.CreateObject("TarnCom32.VisioFunctions");
functions.GetAllTheShapesFromThePage(page, own, true, false, "");
check("the page's shapes", own.names, "Sheet.1 Sheet.2 ");
functions.GetAllTheShapesFromTheShape(group, own, false, false, "");
check("the group's behind them", own.names, "Sheet.1 Sheet.2 Sheet.2 ");

// Quitting ends all documents, and what is in them says so.
visio.Quit();
try {
    check("a page of a Visio that has quit", page.Shapes.Count, "an error");
} catch (error) {
    check("the error of a page without a Visio", (error.number >>> 0).toString(16), "86db089d");
}

if (failures === 0) WScript.Echo("all checks passed");
