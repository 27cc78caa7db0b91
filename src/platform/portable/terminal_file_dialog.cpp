#include "platform/portable/terminal_file_dialog.h"

#include "platform/portable/component_names.h"
#include "platform/portable/file_filters.h"

#include <algorithm>
#include <istream>
#include <optional>
#include <ostream>

namespace tarncom32::platform::portable {

namespace fs = std::filesystem;
using automation::fromUtf8;
using automation::String;
using automation::StringView;

namespace {

constexpr std::size_t kListed = 40; // candidates that are shown at once

bool isFile(const fs::path& path) {
    std::error_code failure;
    return fs::exists(path, failure) && !fs::is_directory(path, failure);
}
bool isFolder(const fs::path& path) {
    std::error_code failure;
    return fs::is_directory(path, failure);
}

// The text for the terminal, which must not obey what a file's name holds: control characters become blanks.
std::string shown(StringView text) {
    String harmless(text);
    std::ranges::replace_if(
        harmless, [](char16_t c) { return c < 0x20 || (c >= 0x7F && c < 0xA0); }, u' ');
    return automation::toUtf8(harmless);
}

bool isPath(StringView name) {
    return !name.empty() && (isSeparator(name.front()) || (name.size() > 1 && name[1] == u':'));
}

} // namespace

/// One showing of the dialog.
struct TerminalFileDialog::Session {
    Session(TerminalFileDialog& owner, const FileDialogRequest& asked, bool isSave)
        : dialog(owner), request(asked), save(isSave), filters(filtersIn(asked.filter)), filter(asked.filterIndex) {
        const StringView file = request.file;
        proposed = file.substr(0, file.find(u'\0'));
        const auto initial = dialog.drives_.toNative(request.initialFolder);
        std::error_code ignored;
        folder = initial && isFolder(*initial) ? fs::absolute(*initial, ignored) : fs::current_path(ignored);
    }

    TerminalFileDialog& dialog;
    const FileDialogRequest& request;
    bool save;
    std::vector<FileFilter> filters;
    std::int32_t filter; // from 1
    String proposed;
    fs::path folder;

    bool hasFlag(std::int32_t flag) const { return (request.flags & flag) != 0; }
    std::ostream& say() { return dialog.output_; }

    StringView patterns() const {
        const auto index = static_cast<std::size_t>(filter);
        return filter >= 1 && index <= filters.size() ? StringView(filters[index - 1].patterns) : StringView();
    }

    void printHead() {
        const StringView ownTitle = save ? u"Save as" : u"Open";
        say() << "== " << shown(request.title.empty() ? ownTitle : request.title) << " ==\n";
        for (std::size_t i = 0; i < filters.size(); ++i)
            say() << (filter == static_cast<std::int32_t>(i + 1) ? " * " : "   ") << i + 1 << "  "
                  << shown(filters[i].description) << '\n';
        say() << "Folder: " << shown(dialog.drives_.toAutomation(folder)) << '\n';
    }

    std::optional<String> readLine() {
        std::string line;
        if (!std::getline(dialog.input_, line)) {
            say() << std::endl;
            return {};
        }
        if (line.ends_with('\r')) line.pop_back();
        return fromUtf8(line);
    }

    std::optional<String> askName() {
        say() << "File name (Tab lists and completes, " << (filters.empty() ? "" : ":1 takes a filter, ")
              << "end of input cancels)";
        if (!proposed.empty()) say() << " [" << shown(proposed) << "]";
        say() << ": " << std::flush;
        return readLine();
    }

    bool confirm(const char* question) {
        say() << question << " [y/n] " << std::flush;
        const auto answer = readLine();
        return answer && (answer->starts_with(u'y') || answer->starts_with(u'Y'));
    }

    // The file that the name stands for; nothing when it can be none.
    std::optional<fs::path> locate(StringView name) const {
        auto path = dialog.drives_.toNative(name);
        if (!path) return {};
        return isPath(name) ? *path : folder / *path;
    }

    // The names in the typed path's folder that go on where it stops, with the path in front; folders, which end in a
    // separator, and files of the filter.
    std::vector<String> candidates(StringView typed) const {
        const std::size_t separator = typed.find_last_of(u"\\/");
        const StringView prefix = separator == StringView::npos ? StringView() : typed.substr(0, separator + 1);
        const String start = automation::toUpper(typed.substr(prefix.size()));
        const auto inside = prefix.empty() ? std::optional(folder) : locate(prefix);
        std::vector<String> names;
        if (!inside) return names;
        std::error_code failure;
        for (fs::directory_iterator entry(*inside, failure), end; !failure && entry != end; entry.increment(failure)) {
            const String name = fromUtf8(entry->path().filename().native());
            if (!automation::toUpper(name).starts_with(start)) continue;
            if (isFolder(entry->path()))
                names.push_back(String(prefix) + name + u"\\");
            else if (fits(patterns(), name))
                names.push_back(String(prefix) + name);
        }
        std::ranges::sort(names);
        return names;
    }

    // What the typed start of a name is completed to; nothing when that is not a single file, and then the reader has
    // been told what there is.
    std::optional<String> complete(StringView typed) {
        const std::vector<String> names = candidates(typed);
        if (names.size() == 1 && !names.front().ends_with(u'\\')) return names.front();
        if (names.empty()) {
            say() << "No file here starts with \"" << shown(typed) << "\".\n";
            return {};
        }
        for (std::size_t i = 0; i < std::min(names.size(), kListed); ++i)
            say() << "   " << shown(names[i]) << '\n';
        if (names.size() > kListed) say() << "   and " << names.size() - kListed << " more\n";
        return {};
    }

    bool takesFilter(StringView line) {
        if (filters.empty() || !line.starts_with(u':')) return false;
        std::size_t number = 0;
        for (const char16_t c : line.substr(1))
            number = c >= u'0' && c <= u'9' && number < 10000 ? number * 10 + (c - u'0') : filters.size() + 1;
        if (number >= 1 && number <= filters.size())
            filter = static_cast<std::int32_t>(number);
        else
            say() << "There are filters 1 to " << filters.size() << ".\n";
        printHead();
        return true;
    }

    // Whether the file may be the answer; if not, the reader has been told why.
    bool accepts(const fs::path& path) {
        if (isFolder(path)) {
            folder = path.lexically_normal();
            printHead();
            return false;
        }
        const bool exists = isFile(path);
        if (!exists && hasFlag(dialog_flag::kFileMustExist)) {
            say() << "This file does not exist. Name one that does.\n";
            return false;
        }
        if (hasFlag(dialog_flag::kPathMustExist) && !isFolder(path.parent_path())) {
            say() << "This folder does not exist. Name one that does.\n";
            return false;
        }
        return !save || !exists || !hasFlag(dialog_flag::kOverwritePrompt) ||
               confirm("This file exists already. Replace it?");
    }

    String withDefaultExtension(String name) const {
        return extensionOf(name).empty() ? name + extensionNamed(request.defaultExtension) : name;
    }

    // The file that a line of input chooses; nothing when it chooses none yet.
    std::optional<fs::path> choose(String line) {
        const bool tab = line.ends_with(u'\t');
        while (line.ends_with(u'\t'))
            line.pop_back();
        if (takesFilter(line)) return {};
        if (line.empty() && !tab) line = proposed;
        const auto typed = locate(line);
        const bool mustComplete = hasFlag(dialog_flag::kFileMustExist) && typed && !isFile(*typed) &&
                                  !isFolder(*typed) && !isFile(*locate(withDefaultExtension(line)));
        if (tab || (mustComplete && !candidates(line).empty())) {
            const auto completed = complete(line);
            if (!completed) return {};
            line = *completed;
            say() << shown(line) << '\n';
        }
        if (line.empty()) return {};
        auto path = locate(line);
        if (path && !isFile(*path) && !isFolder(*path)) path = locate(withDefaultExtension(line));
        if (!path) {
            say() << "This is no path here: drives are C: and Z:.\n";
            return {};
        }
        if (!accepts(*path)) return {};
        return path;
    }

    FileDialogAnswer answer(const fs::path& path) const {
        String file = dialog.drives_.toAutomation(path);
        // The NUL behind the path has to fit as well.
        if (static_cast<std::int64_t>(file.size()) >= request.fileSize)
            return {false, dialog_failure::kBufferTooSmall, {}, filter};
        return {true, dialog_failure::kNone, std::move(file), filter};
    }

    FileDialogAnswer run() {
        printHead();
        while (auto line = askName())
            if (const auto path = choose(std::move(*line))) return answer(*path);
        return {false, dialog_failure::kNone, {}, filter};
    }
};

FileDialogAnswer TerminalFileDialog::showOpen(const FileDialogRequest& request) {
    return Session(*this, request, false).run();
}

FileDialogAnswer TerminalFileDialog::showSave(const FileDialogRequest& request) {
    return Session(*this, request, true).run();
}

} // namespace tarncom32::platform::portable
