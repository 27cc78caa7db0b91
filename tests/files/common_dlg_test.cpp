#include "fakes.h"
#include "files/common_dlg.h"

namespace tarncom32::files {
namespace {

using std::string_literals::operator""s;

constexpr StringView kTwoFilters = u"Drawings (*.vsd)|*.vsd|All files (*.*)|*.*";

class CommonDlgTest : public FilesTest {
protected:
    Ref<CommonDlg> dialog_ = make<CommonDlg>(fakes_.platform);

    // The number that the dialog raises; 0 for none.
    std::int32_t raised() {
        return errorOf([&] { dialog_->showOpen(); });
    }
};

// That each keeps what is assigned to it, is the scripts' affair.
TEST_F(CommonDlgTest, HasItsDefaults) {
    String properties;
    for (const auto& member : CommonDlg::describe().members) {
        if (member.kind != MemberKind::Get) continue;
        const String value = toText(dialog_->get(MemberName(member.name)));
        if (!value.empty() && value != u"0" && value != u"False")
            properties += String(member.name) + u"=" + value + u" ";
    }
    EXPECT_EQ(properties, u"Copies=1 PrinterDefault=True FontSize=8 MaxFileSize=260 Orientation=1 ");
}

TEST_F(CommonDlgTest, PassesTheFieldsToTheDialog) {
    dialog_->fileName = u"Plan.vsd";
    dialog_->dialogTitle = u"Title";
    dialog_->filter = kTwoFilters;
    dialog_->initDir = u"C:\\Drawings";
    dialog_->flags = 0x12345678;
    dialog_->filterIndex = 1;
    dialog_->fileTitle = u"shown";
    dialog_->maxFileSize = 10;
    dialog_->ownerWindow = -5;
    dialog_->instance = 7;
    dialog_->showSave();
    EXPECT_TRUE(files_.saved);
    dialog_->fileName += u"x"; // which leaves no room for two NULs
    EXPECT_EQ(raised(), errors::InvalidProcedureCall);
    ASSERT_EQ(files_.requests.size(), 1U);
    const platform::FileDialogRequest& request = files_.requests[0];
    const auto texts = {request.filter,        request.file,      request.title,
                        request.initialFolder, request.fileTitle, request.defaultExtension};
    EXPECT_THAT(texts, testing::ElementsAre(u"Drawings (*.vsd)\0*.vsd\0All files (*.*)\0*.*\0"s, u"Plan.vsd\0"s,
                                            u"Title", u"C:\\Drawings", u"shown", u"*.vsd"));
    const std::initializer_list<std::int64_t> numbers = {request.fileSize, request.flags, request.filterIndex,
                                                         request.owner, request.instance};
    EXPECT_THAT(numbers, testing::ElementsAre(10, 0x12345678, 1, -5, 7));
}

TEST_F(CommonDlgTest, MakesTheSelectedPatternTheDefaultExtensionForGood) {
    const std::tuple<StringView, StringView, std::int16_t, std::int32_t, StringView> cases[] = {
        {kTwoFilters, u"", 2, 0, u"*.*"}, {kTwoFilters, u"", 1, 0, u"*.vsd"}, {kTwoFilters, u"vss", 2, 0, u"vss"},
        {kTwoFilters, u"", 0, 0, u""},    {kTwoFilters, u"", 32767, 9, u""},  {u"a|", u"", 1, 0, u""},
        {u"no pattern", u"", 1, 9, u""}};
    for (const auto& [filter, extension, index, error, expected] : cases) {
        files_.requests.clear();
        dialog_->filter = filter;
        dialog_->defaultExt = extension;
        dialog_->filterIndex = index;
        EXPECT_EQ(raised(), error) << index;
        EXPECT_EQ(dialog_->defaultExt, expected) << index;
        EXPECT_EQ(files_.requests.empty(), error != 0);
    }
}

TEST_F(CommonDlgTest, TellsCancelledFromFailed) {
    const std::tuple<std::int32_t, std::int16_t, std::int32_t> cases[] = {
        {0, 0, 0},        {0, -1, 32755},    {0, 1, 32755}, // any value but 0 asks for it
        {4104, 0, 32755}, {4104, -1, 32755}, {12290, 0, 12290}, {12290, -1, 12290}};
    dialog_->fileName = u"Plan.vsd";
    for (const auto& [failure, cancelError, error] : cases) {
        files_.answer = {false, failure, u"changed", 9};
        dialog_->cancelError = Boolean::fromBits(cancelError);
        EXPECT_EQ(raised(), error) << failure << " " << cancelError;
        EXPECT_EQ(dialog_->fileName, u"Plan.vsd");
        EXPECT_EQ(dialog_->filterIndex, 0);
    }
    files_.answer = {true, 0, u"C:\\new.vsd\0   "s, 2};
    EXPECT_EQ(raised(), 0);
    EXPECT_EQ(dialog_->fileName, u"C:\\new.vsd");
    EXPECT_EQ(dialog_->filterIndex, 2);
}

class SelectedFilenameTest : public CommonDlgTest {
protected:
    Boolean cancel_;
    ObjectRef used_;
    std::int32_t window_ = 0;

    String select(StringView path = {}, Boolean existing = false, std::int16_t index = 0, StringView filter = {}) {
        return operations_->getSelectedFilename(u"Title", cancel_, path, filter, existing, index, used_, window_);
    }
};

TEST_F(SelectedFilenameTest, PreparesADialogAndHandsItBack) {
    const std::tuple<StringView, StringView, StringView> cases[] = {{u"", u"", u"C:\\Library"},
                                                                    {u"Plan.vsd", u"Plan.vsd", u"C:\\Library"},
                                                                    {u"D:\\Dir\\Plan.vsd", u"Plan.vsd", u"D:\\Dir"}};
    files_.answer = {true, 0, u"D:\\x.vsd", 1};
    window_ = 77;
    for (const auto& [path, file, folder] : cases) {
        EXPECT_EQ(select(path, true), u"D:\\x.vsd");
        const auto& request = files_.requests.back();
        EXPECT_EQ(request.file.substr(0, request.file.find(u'\0')), file);
        EXPECT_EQ(request.initialFolder, folder);
        EXPECT_EQ(request.flags, 4096);
        EXPECT_EQ(request.owner, 77);
    }
    const ObjectRef first = used_;
    ASSERT_TRUE(first);
    select(u"", false, 2, kTwoFilters);
    EXPECT_EQ(used_, first);
    EXPECT_EQ(files_.requests.back().flags, 0);
    EXPECT_EQ(files_.requests.back().filterIndex, 2);
    EXPECT_EQ(cancel_, Boolean(false));
}

TEST_F(SelectedFilenameTest, SaysCancelledForCancelledOnly) {
    for (const auto& [failure, cancelled] : {std::pair{12290, false}, {0, true}, {4104, true}}) {
        cancel_ = Boolean::fromBits(5);
        files_.answer = {false, failure, u"", 0};
        EXPECT_EQ(select(), u"");
        EXPECT_EQ(cancel_.value, cancelled ? -1 : 5);
    }
    cancel_ = Boolean::fromBits(5);
    EXPECT_EQ(select(u"", false, 1), u""); // no such filter: a failure, not a cancelled dialog
    EXPECT_EQ(cancel_.value, 5);
    EXPECT_TRUE(fakes_.messageBox.shown.empty());
}

TEST_F(SelectedFilenameTest, UsesACallersDialogByName) {
    NamedObject::Members members{{u"FileName", [](auto a) { return a.empty() ? u"E:\\y" : u""; }}};
    for (const char16_t* name :
         {u"DialogTitle", u"Filter", u"FilterIndex", u"InitDir", u"Flags", u"CancelError", u"ShowOpen"})
        members[name] = [](auto) { return Variant(); };
    const auto own = make<NamedObject>(members);
    used_ = own;
    window_ = 77; // the dialog has no OwnerWindow: that failure alone is passed over
    EXPECT_EQ(select(), u"E:\\y");
    EXPECT_THAT(own->accessed,
                testing::ElementsAre(u"DialogTitle", u"Filter", u"FilterIndex", u"FileName", u"InitDir", u"Flags",
                                     u"OwnerWindow", u"CancelError", u"ShowOpen", u"FileName"));
}

TEST_F(SelectedFilenameTest, LateBoundKeepsTheFlagOfTheCaller) {
    files_.answer = {true, 0, u"D:\\x.vsd", 1};
    std::vector<Variant> arguments{u"Title", std::int16_t{3}};
    EXPECT_EQ(operations_->invoke(u"GetSelectedFilename", Access::Method, arguments), Variant(u"D:\\x.vsd"));
    EXPECT_EQ(arguments[1], Variant(std::int16_t{3})) << "it is not written";
}

} // namespace
} // namespace tarncom32::files
