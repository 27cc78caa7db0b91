#include "cli/run_tarn.h"
#include "support/temporary_folder.h"

#include <gmock/gmock.h>

namespace tarncom32::tests {
namespace {

struct Case {
    std::vector<std::string> arguments;
    std::string out;
    std::string err = "";
    int status = 0;
};

void check(const std::vector<Case>& cases, const std::vector<std::string>& before = {}) {
    for (const Case& line : cases) {
        std::vector<std::string> arguments = before;
        arguments.insert(arguments.end(), line.arguments.begin(), line.arguments.end());
        SCOPED_TRACE(testing::PrintToString(arguments).substr(0, 200));
        const Outcome run = runTarn(arguments);
        EXPECT_EQ(run.out, line.out);
        EXPECT_EQ(run.err, line.err);
        EXPECT_EQ(run.status, line.status);
    }
}

TEST(Call, PrintsTheResultThenEachByReferenceArgument) {
    check(
        {
            {{"TarnCom32.stringfunctions.REVERSESTRING", "gr\u00F6\u00DFe"}, "e\u00DF\u00F6rg\n"},
            {{"StringFunctions.NumberOfExactMatchesRemovedFromString", "a b", "b"}, "2\nsSource = a b\n"},
            {{"StringFunctions.SplitStringAtDelimiters", "a,b", ",", "empty", "-1"}, "asResult = [\"a\",\"b\"]\n"},
            {{"StringFunctions.CreateCollectionFromString", "a!1;b!2"}, "[\"1\",\"2\"]\n"},
            {{"StringFunctions.CheckForNameInList", "A", "json:[\"a\"]", "true"}, "True\n"},
            // A flag of 1 is not True: it arrives with its bits.
            {{"StringFunctions.CheckForNameInList", "A", "json:[\"a\"]", "bool:1"}, "False\n"},
            {{"StringFunctions.StringExistsInCollection", "k", "json:{\"K\":[]}"}, "False\n"},
            {{"StringFunctions.StringExistsInCollection", "k", "json:{\"K\":\"v\"}"}, "True\n"},
            {{"StringFunctions.IsBlank", "int:0"}, "True\n"},
            {{"StringFunctions.IsBlank", "text:int:0"}, "False\n"},
            {{"StringFunctions.IsBlank", "nothing"}, "True\n"},
            {{"StringFunctions.IsBlank", "json:[null,\" \",0,[]]"}, "True\n"},
            {{"VisioFunctions.GetVisioObjectsFromAddonString", "/doc=1"},
             "sParameters = \novShape = Nothing\novPage = Nothing\novDoc = Nothing\n"},
            {{"VisioFunctions.WhichVisioMajorVersionIsThis", "nothing"},
             "0\n",
             "[TarnCom32] Problem in VisioFunctions.WhichVisioMajorVersionIsThis\nError Number: 91\nError Description: "
             "Object variable or With block variable not set\n"},
            // Any text is an argument; malformed UTF-8 comes out well formed.
            {{"StringFunctions.ReverseString", "--", "--json"}, "nosj--\n"},
            {{"StringFunctions.ReverseString", "--json", "--", "--"}, "{\"result\":\"--\"}\n"},
            {{"StringFunctions.ReverseString", "-"}, "-\n"},
            {{"StringFunctions.ReverseString", "session"}, "noisses\n"},
            {{"StringFunctions.ReverseString", "[1,2]"}, "]2,1[\n"},
            {{"StringFunctions.ReverseString", "a\xFF\xE9"}, "\uFFFD\uFFFDa\n"},
        },
        {"call"});
}

TEST(Call, PrintsOneObjectForPrograms) {
    check(
        {
            {{"StringFunctions.SplitStringAtDelimiters", "a,b", ",", "empty", "-1"},
             "{\"result\":null,\"out\":{\"asResult\":[\"a\",\"b\"]}}\n"},
            {{"StringFunctions.IsBlank", "empty"}, "{\"result\":true}\n"},
            {{"StringFunctions.ReverseString", "\"\\\n\U0001F600"}, "{\"result\":\"\uFFFD\uFFFD\\n\\\\\\\"\"}\n"},
            {{"VisioFunctions.WhichVisioMajorVersionIsThis", "nothing"},
             "{\"result\":0,\"reports\":[\"Problem in VisioFunctions.WhichVisioMajorVersionIsThis\\r\\nError Number: "
             "91\\r\\nError Description: Object variable or With block variable not set\"]}\n"},
            // What was written before the failure is there as well.
            {{"StringFunctions.NumberOfExactMatchesRemovedFromString", "ab", ""},
             "{\"result\":null,\"out\":{\"sSource\":\"ab\"},\"error\":{\"number\":6,\"description\":\"Overflow\"}}\n",
             "",
             1},
        },
        {"call", "--json"});
}

/// A run that prints nothing but this line.
struct Failure {
    std::vector<std::string> arguments;
    std::string line;
};

void check(const std::vector<Failure>& failures, int status) {
    for (const auto& [arguments, line] : failures)
        check({{arguments, "", "tarn: " + line + '\n', status}});
}

TEST(Call, TellsWhatWasRaisedInOneLine) {
    check(
        std::vector<Failure>{
            {{"call", "StringFunctions.SplitStringAtDelimiters", "a,b", ",", "", "-1"},
             "error 13: Type mismatch; \"\" cannot be asResult As String(); write empty for a new variable"},
            {{"call", "StringFunctions.RemoveIDFromListWithDelimiter", "a", "1", ","}, "error 13: Type mismatch"},
            {{"call", "StringFunctions.RemoveIDFromListWithDelimiter", "1", "70000", ","},
             "error 6: Overflow; \"70000\" cannot be iID As Integer"},
            {{"call", "StringFunctions.ReverseString"},
             "error 449: Argument not optional; StringFunctions.ReverseString takes sText"},
            {{"call", "StringFunctions.ReverseString", "a", "b"},
             "error 450: Wrong number of arguments or invalid property assignment; StringFunctions.ReverseString takes "
             "sText"},
            {{"call", "UserProfileEntry.Name"},
             "error 429: ActiveX component can't create object: TarnCom32.UserProfileEntry is not the ProgID of a "
             "class that can be created"},
        },
        1);
}

TEST(Call, OfFileOperationsWorksOnTheFilesFoldersAndInputOfTheProgram) {
    const TemporaryFolder folder;
    const std::string here = folder.path().string();
    std::filesystem::permissions(folder.write("Plan.vsd"), std::filesystem::perms::owner_read);
    const std::string made = "\noFSO = FileSystemObject\n";
    const struct {
        std::vector<std::string> call;
        std::string out; // a regular expression; [\] for a backslash
    } cases[] = {
        {{"IsFileReadOnly", here + "/Plan.vsd"}, "True\n"},
        {{"FindSystemFolder", "26"}, "Z:[\\]config\n"},
        {{"IsFileAlreadyOpened", here + "/missing"}, "False\n"},
        {{"GetTempPathFileName", "nothing", ".vsd"}, "Z:[\\][^\n]*[\\]rad[0-9A-F]+[.]vsd" + made},
        {{"SaveStreamToFile", "text \u20AC\u0416", here + "/out.txt"}, "oFSO = FileSystemObject\n"},
        {{"GetShortPath", "Z:\\"}, "Z:[\\]\n"},
        {{"GetLongPath", "Z:\\missing"}, "\n"},
        // Without input every dialog is cancelled.
        {{"GetSelectedFilename", "Title"}, "\nbCancel = True\noCommonDialog = CommonDlg\nhWndParent = 0\n"},
    };
    for (const auto& c : cases) {
        std::vector<std::string> arguments = c.call;
        arguments[0] = "FileOperations." + arguments[0];
        arguments.insert(arguments.begin(), "call");
        const Outcome outcome = runTarn(arguments, {"HOME=" + here, "TMPDIR=" + here, "XDG_CONFIG_HOME=/config"});
        EXPECT_EQ(outcome.status, 0) << c.call[0] << ": " << outcome.err;
        EXPECT_THAT(outcome.out, testing::MatchesRegex(c.out)) << c.call[0];
    }
    EXPECT_EQ(folder.read("out.txt"), "text \x80?");
}

TEST(Usage, IsAnsweredWithOneLineThatSaysWhatToDo) {
    check(
        std::vector<Failure>{
            {{}, "a command is missing; \"tarn --help\" lists them"},
            {{"clases"}, "there is no command or option \"clases\"; \"tarn --help\" lists them"},
            {{"call"}, "CLASS.MEMBER is required; \"tarn call --help\" shows what can be written"},
            {{"call", "StringFunction.IsBlank"},
             "there is no class \"StringFunction\"; did you mean StringFunctions? \"tarn classes\" lists them all"},
            {{"call", "X\ny.IsBlank"}, "there is no class \"X y\"; \"tarn classes\" lists them all"},
            {{"call", "StringFunctions.IsBlonk"},
             "StringFunctions has no member \"IsBlonk\"; did you mean IsBlank? \"tarn describe StringFunctions\" "
             "lists them all"},
            {{"call", "StringFunctions"},
             "a member is called as StringFunctions.MEMBER; \"tarn describe StringFunctions\" lists them"},
            {{"call", "StringFunctions."},
             "a member's name must follow the point in \"StringFunctions.\"; \"tarn describe StringFunctions\" lists "
             "them"},
            {{"call", "StringFunctions.IsBlank", "int:1.5"},
             "\"int:1.5\": int: wants a whole number from -2147483648 to 2147483647, as in int:5"},
            {{"call", "StringFunctions.IsBlank", "num:"}, "\"num:\": num: wants a number, as in num:0.5 or num:1e3"},
            {{"call", "StringFunctions.IsBlank", "bool:yes"},
             "\"bool:yes\": bool: wants true, false or a number of 16 bits, as in bool:true"},
            {{"call", "StringFunctions.IsBlank", "json:[1"},
             "json: cannot be read at character 3 of \"[1\"; write it as in json:'[\"a\", 2, true]'"},
            {{"call", "StringFunctions.IsBlank", "json:" + std::string(60000, '[') + std::string(60000, ']')},
             "json: takes lists in lists at most 64 deep"},
            {{"call", "StringFunctions.IsBlank", "--quiet", "x"},
             "The following argument was not expected: --quiet; put -- in front of arguments that begin with -; "
             "\"tarn call --help\" shows what can be written"},
            {{"describe", "SystemFolder.Desktop"},
             "SystemFolder is an enumeration, not a class; \"tarn describe SystemFolder\" lists its values"},
            {{"describe", "eColor"},
             "there is no class \"eColor\"; did you mean eCOLORS? \"tarn classes\" lists them all"},
            {{"classes", "extra"},
             "The following argument was not expected: extra; \"tarn classes --help\" shows what can be written"},
        },
        2);
}

TEST(Output, ThatCannotBeWrittenIsAFailure) {
    const Outcome run = runTarn({"classes"}, {}, "/dev/full");
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.err, "tarn: the output could not be written; is the disk full?\n");
}

} // namespace
} // namespace tarncom32::tests
