// Marks the application objects of a type library as pre-declared too: TYPEFLAG_FPREDECLID, for which IDL has no word.
//   tarncom32_mark_predeclared FILE.tlb

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace {

constexpr std::uint32_t kSignature = 0x5446534D; // "MSFT"
constexpr std::uint32_t kHasHelpDll = 0x100;
constexpr std::uint32_t kApplicationObject = 0x1;
constexpr std::uint32_t kPredeclared = 0x8;
constexpr std::uint32_t kCoclass = 5;

// Where things stand in the file, in bytes.
constexpr std::size_t kHeaderFlags = 0x14;
constexpr std::size_t kTypeCount = 0x20;
constexpr std::size_t kHeaderSize = 0x54;
constexpr std::size_t kTypeKind = 0x00;
constexpr std::size_t kTypeFlags = 0x30;

class Image {
public:
    explicit Image(std::vector<char> bytes) : bytes_(std::move(bytes)) {}

    std::uint32_t word(std::size_t offset) const {
        std::uint32_t value = 0;
        check(offset);
        std::memcpy(&value, &bytes_[offset], sizeof value);
        return value;
    }
    void setWord(std::size_t offset, std::uint32_t value) {
        check(offset);
        std::memcpy(&bytes_[offset], &value, sizeof value);
    }
    const std::vector<char>& bytes() const { return bytes_; }

private:
    void check(std::size_t offset) const {
        if (offset + sizeof(std::uint32_t) > bytes_.size()) throw std::runtime_error("the type library is cut off");
    }

    std::vector<char> bytes_;
};

void mark(Image& image) {
    if (image.word(0) != kSignature) throw std::runtime_error("this is no type library");
    const std::size_t count = image.word(kTypeCount);
    const std::size_t offsets = kHeaderSize + (image.word(kHeaderFlags) & kHasHelpDll ? 4 : 0);
    // Behind the offsets stands the directory of segments; the types' own is the first.
    const std::size_t types = image.word(offsets + 4 * count);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t type = types + image.word(offsets + 4 * i);
        const std::uint32_t flags = image.word(type + kTypeFlags);
        if ((image.word(type + kTypeKind) & 0xF) == kCoclass && (flags & kApplicationObject))
            image.setWord(type + kTypeFlags, flags | kPredeclared);
    }
}

} // namespace

int main(int count, char** arguments) {
    try {
        if (count != 2) throw std::runtime_error("usage: tarncom32_mark_predeclared FILE.tlb");
        std::ifstream in(arguments[1], std::ios::binary);
        Image image({std::istreambuf_iterator<char>(in), {}});
        mark(image);
        std::ofstream out(arguments[1], std::ios::binary);
        out.write(image.bytes().data(), static_cast<std::streamsize>(image.bytes().size()));
        if (!out.flush()) throw std::runtime_error(std::string("cannot write ") + arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
