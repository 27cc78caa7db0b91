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
    EXPECT_EQ(toText(operations_->call(u"GetTempFileName")), u"rad1.tmp") << "the variable left out";
}

TEST_F(FileOperationsTest, CallsACallersObjectByName) {
    std::vector<Variant> given;
    String extension = u"vsdx";
    const auto stream = make<NamedObject>(NamedObject::Members{
        {u"Write", [&](Arguments a) { return given.push_back(a[0]), Variant(); }},
        {u"Close", [](Arguments) { return Variant(); }},
    });
    const auto foreign = make<NamedObject>(NamedObject::Members{
        {u"GetExtensionName", [&](Arguments) { return Variant(extension); }},
        {u"GetFileName", [](Arguments a) { return Variant(u"name of " + toText(a[0])); }},
        {u"GetSpecialFolder", [](Arguments a) { return Variant(answering(u"Path", u"D:\\Folder" + toText(a[0]))); }},
        {u"GetTempName", [](Arguments) { return Variant(u"rad.x.tmp"); }},
        {u"CreateTextFile", [&](Arguments a) { return given.assign(a.begin(), a.end()), Variant(stream); }},
    });
    ObjectRef own = foreign;
    EXPECT_EQ(operations_->trimFileExtension(u"C:\\Plan.vsdx", own), u"C:\\Plan");
    extension = u"";
    EXPECT_EQ(operations_->trimFileExtension(u"C:\\Rev.2\\Plan", own), u"C:\\Rev.2\\Plan");
    EXPECT_EQ(operations_->trimFilePath(u"C:\\Plan", own), u"name of C:\\Plan");
    EXPECT_EQ(operations_->getTempDirectory(own), u"D:\\Folder2\\");
    for (const auto& [asked, name] :
         {std::pair{u"", u"rad.x.tmp"}, {u".vsd", u"rad.x.vsd"}, {u"xml", u"rad.xxml"}}) // no dot is put in
        EXPECT_EQ(operations_->getTempPathFileName(own, asked), String(u"D:\\Folder2\\") + name);
    operations_->saveStreamToFile(u"line\n", u"C:\\out.txt", false, own);
    // Nothing is said of UTF-16.
    EXPECT_THAT(given, ElementsAre(Variant(u"C:\\out.txt"), Variant(false), Variant(u"line\n")));
    EXPECT_THAT(foreign->named, ElementsAre(u"Overwrite"));
    EXPECT_THAT(stream->accessed, ElementsAre(u"Write", u"Close"));
    EXPECT_EQ(files_.created, 0);
    EXPECT_TRUE(reports().empty());
    own = answering(u"GetSpecialFolder", answering(u"Path", u"T:\\"));
    EXPECT_EQ(operations_->getTempDirectory(own), u"T:\\") << "a separator that is there stays the only one";
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
