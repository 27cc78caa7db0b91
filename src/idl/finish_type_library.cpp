// Finishes a type library where the IDL compiler falls short:
//   - application objects become pre-declared too (TYPEFLAG_FPREDECLID, for which IDL has no word);
//   - defaults of by-reference parameters get the type of what is referred to: the compiler gives them that of a
//     pointer, which no VARIANT can have, and clients then cannot read the member's description.
//
//   tarncom32_finish_type_library FILE.tlb

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
constexpr std::size_t kTypeMembers = 0x04;  // where the members' records are; in front of them stands their size
constexpr std::size_t kMemberCounts = 0x18; // functions in the lower half
constexpr std::size_t kTypeFlags = 0x30;
constexpr std::size_t kFunctionKind = 0x10;
constexpr std::size_t kParameterCount = 0x14; // in the lower half
constexpr std::size_t kParameterSize = 12;    // its type is the first word

// Segments by their place in the directory.
constexpr std::size_t kSegmentSize = 0x10;
constexpr std::size_t kTypesSegment = 0;
constexpr std::size_t kTypeDescriptionsSegment = 9;

// A default that fits stands in place of its offset: the upper bit, the type, the value.
constexpr std::uint32_t kHasDefaults = 0x1000;
constexpr std::uint32_t kNoDefault = 0xFFFFFFFF;
constexpr std::uint32_t kInPlace = 0x80000000;
constexpr std::uint32_t kDefaultType = 0x7C000000;
constexpr int kDefaultTypeShift = 26;
constexpr std::uint32_t kDispatch = 9; // VT_DISPATCH
constexpr std::uint32_t kPointer = 26; // VT_PTR

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

/// What a pointer's description refers to; objects where that is a pointer in turn.
std::uint32_t referredType(const Image& image, std::uint32_t pointer, std::size_t descriptions) {
    const std::uint32_t target = image.word(descriptions + pointer + 4);
    return target & kInPlace ? target & 0x1F : kDispatch;
}

void correctDefaults(Image& image, std::size_t type, std::size_t descriptions) {
    const std::size_t functions = image.word(type + kMemberCounts) & 0xFFFF;
    std::size_t record = image.word(type + kTypeMembers) + 4;
    for (std::size_t i = 0; i < functions; ++i) {
        const std::size_t size = image.word(record) & 0xFFFF;
        const std::size_t parameters = image.word(record + kParameterCount) & 0xFFFF;
        const std::size_t firstParameter = record + size - parameters * kParameterSize;
        const std::size_t defaults = firstParameter - parameters * 4;
        for (std::size_t p = 0; p < parameters && image.word(record + kFunctionKind) & kHasDefaults; ++p) {
            const std::uint32_t value = image.word(defaults + p * 4);
            const std::uint32_t described = image.word(firstParameter + p * kParameterSize);
            if (value == kNoDefault || !(value & kInPlace) || described & kInPlace ||
                (value & kDefaultType) >> kDefaultTypeShift != kPointer)
                continue;
            image.setWord(defaults + p * 4, (value & ~kDefaultType) | referredType(image, described, descriptions)
                                                                          << kDefaultTypeShift);
        }
        record += size;
    }
}

void finish(Image& image) {
    if (image.word(0) != kSignature) throw std::runtime_error("this is no type library");
    const std::size_t count = image.word(kTypeCount);
    const std::size_t offsets = kHeaderSize + (image.word(kHeaderFlags) & kHasHelpDll ? 4 : 0);
    // Behind the offsets stands the directory of segments.
    const std::size_t directory = offsets + 4 * count;
    const std::size_t types = image.word(directory + kTypesSegment * kSegmentSize);
    const std::size_t descriptions = image.word(directory + kTypeDescriptionsSegment * kSegmentSize);
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t type = types + image.word(offsets + 4 * i);
        const std::uint32_t flags = image.word(type + kTypeFlags);
        if ((image.word(type + kTypeKind) & 0xF) == kCoclass && (flags & kApplicationObject))
            image.setWord(type + kTypeFlags, flags | kPredeclared);
        correctDefaults(image, type, descriptions);
    }
}

} // namespace

int main(int count, char** arguments) {
    try {
        if (count != 2) throw std::runtime_error("usage: tarncom32_finish_type_library FILE.tlb");
        std::ifstream in(arguments[1], std::ios::binary);
        Image image({std::istreambuf_iterator<char>(in), {}});
        finish(image);
        std::ofstream out(arguments[1], std::ios::binary);
        out.write(image.bytes().data(), static_cast<std::streamsize>(image.bytes().size()));
        if (!out.flush()) throw std::runtime_error(std::string("cannot write ") + arguments[1]);
        return 0;
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
}
