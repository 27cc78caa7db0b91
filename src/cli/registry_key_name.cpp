#include "cli/registry_key_name.h"

#include "cli/terminal.h"
#include "cli/usage_error.h"

namespace tarncom32::cli {

namespace {

namespace root = platform::registry_root;
using automation::fromUtf8;
using automation::toUtf8;

constexpr struct {
    std::int32_t root;
    const char* name;
    const char* shortName;
} kRoots[] = {
    {root::kClassesRoot, "HKEY_CLASSES_ROOT", "HKCR"},     {root::kCurrentUser, "HKEY_CURRENT_USER", "HKCU"},
    {root::kLocalMachine, "HKEY_LOCAL_MACHINE", "HKLM"},   {root::kUsers, "HKEY_USERS", "HKU"},
    {root::kCurrentConfig, "HKEY_CURRENT_CONFIG", "HKCC"}, {root::kDynamicData, "HKEY_DYN_DATA", "HKDD"},
};

bool sameName(const platform::CodePage& codePage, std::string_view left, std::string_view right) {
    return automation::toUpper(codePage.decode(left)) == automation::toUpper(codePage.decode(right));
}

} // namespace

std::vector<std::string> rootNames() {
    std::vector<std::string> names;
    for (const auto& known : kRoots)
        names.emplace_back(known.name);
    return names;
}

std::string toCodePage(const platform::CodePage& codePage, const std::string& text) {
    const automation::String wide = fromUtf8(text);
    if (codePage.narrow(wide) != wide)
        throw UsageError(inQuotes(text) + " has a character that the registry's 8-bit code page lacks");
    return codePage.encode(wide);
}

RegistryKeyName::RegistryKeyName(const platform::CodePage& codePage, const std::string& text) : codePage_(codePage) {
    const std::size_t end = std::min(text.find('\\'), text.size());
    const automation::String first = fromUtf8(text.substr(0, end));
    for (const auto& known : kRoots) {
        if (automation::equalsIgnoreCase(first, fromUtf8(known.name)) ||
            automation::equalsIgnoreCase(first, fromUtf8(known.shortName)))
            root_ = known.root;
    }
    if (root_ == 0)
        throw UsageError("the key " + inQuotes(text) +
                         " does not begin with a root; write HKCU\\Software\\... (HKCR, HKCU, HKLM, HKU, HKCC, HKDD or "
                         "their long names), in quotes because of the backslashes");
    const std::string below = toCodePage(codePage, text.substr(end));
    for (std::size_t start = 0; start < below.size();) {
        const std::size_t next = std::min(below.find('\\', start), below.size());
        if (next > start) path_ += (path_.empty() ? "" : "\\") + below.substr(start, next - start);
        start = next + 1;
    }
}

std::string RegistryKeyName::parentPath() const {
    const std::size_t separator = path_.rfind('\\');
    return separator == std::string::npos ? "" : path_.substr(0, separator);
}

std::string RegistryKeyName::lastName() const {
    return path_.substr(path_.rfind('\\') + 1); // the whole path when there is none: npos + 1 is 0
}

std::string RegistryKeyName::spelled(platform::Registry& registry) const {
    std::string name;
    for (const auto& known : kRoots)
        if (known.root == root_) name = known.name;
    std::string above;
    for (std::size_t start = 0; start < path_.size();) {
        const std::size_t next = std::min(path_.find('\\', start), path_.size());
        std::string level = path_.substr(start, next - start);
        if (const auto parent = registry.open(root_, above, platform::RegistryAccess::Read)) {
            std::string subkey;
            for (std::uint32_t i = 0; parent->subkeyAt(i, subkey); ++i) {
                if (!sameName(codePage_, subkey, level)) continue;
                level = subkey;
                break;
            }
        }
        name += "\\" + toUtf8(codePage_.decode(level));
        above += (above.empty() ? "" : "\\") + level;
        start = next + 1;
    }
    return name;
}

} // namespace tarncom32::cli
