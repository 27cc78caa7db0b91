#include "automation/array.h"
#include "fakes.h"

namespace tarncom32::files {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using Arguments = NamedObject::Arguments;

class FileOperationsTest : public FilesTest {};

ObjectRef answering(StringView name, Variant result) {
    return make<NamedObject>(NamedObject::Members{{String(name), [result](Arguments) { return result; }}});
}

TEST_F(FileOperationsTest, AMissingFileIsReadOnlyAndNotOpen) {
    for (const auto& [word, readOnly] : {std::pair{0xFFFFFFFFU, true}, {1U, true}, {33U, true}, {128U, false}}) {
        files_.attributeWord = word;
        EXPECT_EQ(operations_->isFileReadOnly(u"f").isTrue(), readOnly) << word;
    }
    for (const auto& [error, open] :
         {std::pair{0, false}, {53, false}, {70, true}, {76, true}, {52, true}, {7, true}}) {
        files_.openError = error;
        EXPECT_EQ(operations_->isFileAlreadyOpened(u"f").isTrue(), open) << error;
    }
    EXPECT_TRUE(reports().empty());
}

TEST_F(FileOperationsTest, TrimsAFoldersPathLikeItsBuffer) {
    using frame::SystemFolder;
    files_.specialFolder = u"  C:\\Documents \0 C:\\rest"s;
    EXPECT_EQ(operations_->findSystemFolder(SystemFolder::My_Documents), u"C:\\Documents");
    EXPECT_EQ(operations_->findSystemFolder(static_cast<SystemFolder>(12345)), u"");
}

TEST_F(FileOperationsTest, CleansTheCallersVariable) {
    const std::tuple<Variant, Variant, String> cases[] = {
        {u"a/b:c?.vsd", u"a_b_c_.vsd", u"a_b_c_.vsd"},
        {u"\\/:?<>|", u"_______", u"_______"},
        {u"a*b\"c", u"a*b\"c", u"a*b\"c"}, // these two stay
        {std::int16_t{12}, u"12", u"12"},
        {{}, u"", u""},
        {Null{}, Null{}, u""},
        {Array(VariantType::String), Array(VariantType::String), u""}};
    for (const auto& [given, left, result] : cases) {
        std::vector<Variant> name{given}; // late bound, as from a script
        EXPECT_EQ(operations_->invoke(u"CleanFileName", Access::Method, name), Variant(result));
        EXPECT_EQ(name[0], left);
    }
    EXPECT_THAT(reports(),
                ElementsAre("Problem in FileOperations.CleanFileName", "Problem in FileOperations.CleanFileName"));
}

TEST_F(FileOperationsTest, OutputsMayBeTheInput) {
    String path = u"C:\\Drawings\\Plan.vsd";
    String name;
    operations_->parseFileAndPathName(path, path, name);
    EXPECT_EQ(path, u"C:\\Drawings");
    EXPECT_EQ(name, u"Plan.vsd");
    String extension;
    operations_->parseFileNameAndExtension(name, extension, name);
    EXPECT_EQ(extension, u"Plan");
    EXPECT_EQ(name, u".vsd");
}

TEST_F(FileOperationsTest, MakesAnObjectOnceAndHandsItBack) {
    files_.object = answering(u"GetTempName", u"rad1.tmp");
    ObjectRef own;
    EXPECT_EQ(operations_->getTempFileName(own), u"rad1.tmp");
    EXPECT_EQ(own, files_.object);
    operations_->getTempFileName(own);
    EXPECT_EQ(files_.created, 1);

    // Late bound the caller's variable is filled as well, and one that is left out does no harm.
    std::vector<Variant> arguments{ObjectRef()};
    operations_->invoke(u"GetTempFileName", Access::Method, arguments);
    EXPECT_EQ(toObject(arguments[0]), files_.object);
    EXPECT_EQ(toText(operations_->call(u"GetTempFileName")), u"rad1.tmp");
}

TEST_F(FileOperationsTest, CallsACallersObjectByName) {
    Variant created, overwrite, text;
    std::size_t count = 0;
    bool closed = false;
    const ObjectRef stream = make<NamedObject>(NamedObject::Members{
        {u"Write", [&](Arguments a) { return text = a[0], Variant(); }},
        {u"Close", [&](Arguments) { return closed = true, Variant(); }},
    });
    const auto foreign = make<NamedObject>(NamedObject::Members{
        {u"GetExtensionName", [](Arguments) { return Variant(u"vsdx"); }},
        {u"GetFileName", [](Arguments a) { return Variant(u"name of " + toText(a[0])); }},
        {u"GetSpecialFolder", [](Arguments a) { return Variant(answering(u"Path", u"D:\\Folder" + toText(a[0]))); }},
        {u"GetTempName", [](Arguments) { return Variant(u"rad.x.tmp"); }},
        {u"CreateTextFile",
         [&](Arguments a) { return created = a[0], overwrite = a[1], count = a.size(), Variant(stream); }},
    });
    ObjectRef own = foreign;
    EXPECT_EQ(operations_->trimFileExtension(u"C:\\Plan.vsdx", own), u"C:\\Plan");
    EXPECT_EQ(operations_->trimFilePath(u"C:\\Plan", own), u"name of C:\\Plan");
    EXPECT_EQ(operations_->getTempDirectory(own), u"D:\\Folder2\\");
    EXPECT_EQ(operations_->getTempPathFileName(own, u""), u"D:\\Folder2\\rad.x.tmp");
    EXPECT_EQ(operations_->getTempPathFileName(own, u".vsd"), u"D:\\Folder2\\rad.x.vsd");
    EXPECT_EQ(operations_->getTempPathFileName(own, u"xml"), u"D:\\Folder2\\rad.xxml"); // no dot is put in
    operations_->saveStreamToFile(u"line\n", u"C:\\out.txt", false, own);
    EXPECT_EQ(created, Variant(u"C:\\out.txt"));
    EXPECT_EQ(overwrite, Variant(false));
    EXPECT_THAT(foreign->named, ElementsAre(u"Overwrite"));
    EXPECT_EQ(count, 2U); // nothing is said of UTF-16
    EXPECT_EQ(text, Variant(u"line\n"));
    EXPECT_TRUE(closed);
    EXPECT_EQ(files_.created, 0);
    EXPECT_TRUE(reports().empty());
}

TEST_F(FileOperationsTest, KeepsAPathWithoutExtensionAndASeparatorThatIsThere) {
    ObjectRef none = answering(u"GetExtensionName", u"");
    EXPECT_EQ(operations_->trimFileExtension(u"C:\\Rev.2\\Plan", none), u"C:\\Rev.2\\Plan");
    ObjectRef root = answering(u"GetSpecialFolder", answering(u"Path", u"T:\\"));
    EXPECT_EQ(operations_->getTempDirectory(root), u"T:\\");
}

TEST_F(FileOperationsTest, ReportsOrRaisesWhatTheObjectFailsIn) {
    ObjectRef none; // and none can be made
    EXPECT_EQ(operations_->getTempDirectory(none), u"");
    EXPECT_EQ(operations_->getTempFileName(none), u"");
    EXPECT_EQ(operations_->getTempPathFileName(none, u".x"), u"");
    operations_->saveStreamToFile(u"", u"f", true, none);
    EXPECT_THAT(reports(),
                ElementsAre("Problem in FileOperations.GetTempDirectory", "Problem in FileOperations.GetTempFileName",
                            "Problem in FileOperations.GetTempPathFileName",
                            "Problem in FileOperations.SaveStreamToFile"));
    EXPECT_NE(fakes_.messageBox.shown[0].text.find(u"Error Number: 429\r\n"), String::npos);

    for (ObjectRef fso : {none, answering(u"Other", u"")}) {
        const std::int32_t number = fso ? errors::NoSuchMember : errors::CannotCreateObject;
        for (const auto member : {&FileOperations::trimFileExtension, &FileOperations::trimFilePath})
            EXPECT_EQ(errorOf([&] { (*operations_.*member)(u"f", fso); }), number);
    }
    EXPECT_EQ(fakes_.messageBox.shown.size(), 4U);
}

} // namespace
} // namespace tarncom32::files
