// Finishes a type library where the IDL compiler falls short:
//   - application objects become pre-declared too (TYPEFLAG_FPREDECLID, for which IDL has no word);
//   - defaults of by-reference parameters get the type of what is referred to: the compiler gives them that of a
//     pointer, which no VARIANT can have, and clients then cannot read the member's description;
//   - the values of enumerations get their help texts, which the compiler refuses to take.
//
//   tarncom32_finish_type_library FILE.tlb

#include "frame/enumerations.h"

#include <cstdint>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>
#include <stdexcept>
#include <vector>

namespace {

using namespace tarncom32;

constexpr std::uint32_t kSignature = 0x5446534D; // "MSFT"
constexpr std::uint32_t kHasHelpDll = 0x100;
constexpr std::uint32_t kApplicationObject = 0x1;
constexpr std::uint32_t kPredeclared = 0x8;
constexpr std::uint32_t kEnumeration = 0;
constexpr std::uint32_t kCoclass = 5;

// Where things stand in the file, in bytes.
constexpr std::size_t kHeaderFlags = 0x14;
constexpr std::size_t kTypeCount = 0x20;
constexpr std::size_t kHeaderSize = 0x54;
constexpr std::size_t kTypeKind = 0x00;
constexpr std::size_t kTypeMembers = 0x04;  // where the members' records are; in front of them stands their size
constexpr std::size_t kMemberCounts = 0x18; // functions in the lower half, variables in the upper
constexpr std::size_t kTypeFlags = 0x30;
constexpr std::size_t kTypeName = 0x34;
constexpr std::size_t kFunctionKind = 0x10;
constexpr std::size_t kParameterCount = 0x14; // in the lower half
constexpr std::size_t kParameterSize = 12;    // its type is the first word

constexpr std::size_t kVariableSize = 0x14; // without the optional words: help context and help text
constexpr std::size_t kNameLength = 0x08;   // in the lowest byte
constexpr std::size_t kNameText = 0x0C;

// Segments by their place in the directory: where each is, its size, and two words more.
constexpr std::size_t kSegmentCount = 15;
constexpr std::size_t kSegmentSize = 0x10;
constexpr std::size_t kTypesSegment = 0;
constexpr std::size_t kNamesSegment = 7;
constexpr std::size_t kTextsSegment = 8;
constexpr std::size_t kTypeDescriptionsSegment = 9;
constexpr std::uint32_t kNowhere = 0xFFFFFFFF;

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
    explicit Image(std::vector<char> bytes) : bytes_(std::move(bytes)) {
        if (word(0) != kSignature) throw std::runtime_error("this is no type library");
        typeCount_ = word(kTypeCount);
        typeOffsets_ = kHeaderSize + (word(kHeaderFlags) & kHasHelpDll ? 4 : 0);
    }

    std::uint32_t word(std::size_t offset) const {
        std::uint32_t value = 0;
        check(offset, sizeof value);
        std::memcpy(&value, &bytes_[offset], sizeof value);
        return value;
    }
    void setWord(std::size_t offset, std::uint32_t value) {
        check(offset, sizeof value);
        std::memcpy(&bytes_[offset], &value, sizeof value);
    }
    const std::vector<char>& bytes() const { return bytes_; }

    std::size_t typeCount() const { return typeCount_; }
    std::size_t type(std::size_t index) const { return segment(kTypesSegment) + word(typeOffsets_ + 4 * index); }
    std::size_t segment(std::size_t index) const { return word(entry(index)); }

    automation::String typeName(std::size_t type) const {
        const std::size_t name = segment(kNamesSegment) + word(type + kTypeName);
        const std::size_t length = word(name + kNameLength) & 0xFF;
        check(name + kNameText, length);
        return automation::fromUtf8({&bytes_[name + kNameText], length});
    }

    /// Adds a text to those of the library; its place among them.
    std::uint32_t addText(const std::string& text) {
        const std::uint32_t place = word(entry(kTextsSegment) + 4);
        if (segment(kTextsSegment) == kNowhere) throw std::runtime_error("the type library has no texts yet");
        std::string stored{static_cast<char>(text.size() & 0xFF), static_cast<char>(text.size() >> 8)};
        stored += text;
        stored.resize(std::max<std::size_t>(8, (stored.size() + 3) / 4 * 4), 'W');
        insert(segment(kTextsSegment) + place, stored);
        setWord(entry(kTextsSegment) + 4, place + static_cast<std::uint32_t>(stored.size()));
        return place;
    }

    /// Makes room for the bytes; segments and members from there on move.
    void insert(std::size_t at, const std::string& bytes) {
        bytes_.insert(bytes_.begin() + static_cast<std::ptrdiff_t>(at), bytes.begin(), bytes.end());
        const auto move = [&](std::size_t offset) {
            const std::uint32_t place = word(offset);
            if (place != kNowhere && place >= at) setWord(offset, place + static_cast<std::uint32_t>(bytes.size()));
        };
        for (std::size_t i = 0; i < kSegmentCount; ++i)
            move(entry(i));
        for (std::size_t i = 0; i < typeCount_; ++i)
            move(type(i) + kTypeMembers);
    }

private:
    /// The directory of segments stands behind the types' offsets.
    std::size_t entry(std::size_t index) const { return typeOffsets_ + 4 * typeCount_ + index * kSegmentSize; }

    void check(std::size_t offset, std::size_t size) const {
        if (offset + size > bytes_.size()) throw std::runtime_error("the type library is cut off");
    }

    std::vector<char> bytes_;
    std::size_t typeCount_ = 0;
    std::size_t typeOffsets_ = 0;
};

/// What a pointer's description refers to; objects where that is a pointer in turn.
std::uint32_t referredType(const Image& image, std::uint32_t pointer) {
    const std::uint32_t target = image.word(image.segment(kTypeDescriptionsSegment) + pointer + 4);
    return target & kInPlace ? target & 0x1F : kDispatch;
}

void correctDefaults(Image& image, std::size_t type) {
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
            image.setWord(defaults + p * 4, (value & ~kDefaultType) | referredType(image, described)
                                                                          << kDefaultTypeShift);
        }
        record += size;
    }
}

/// Gives the values the help texts of the enumeration of that name.
void addHelpOfValues(Image& image, std::size_t type) {
    const frame::EnumerationInfo* enumeration = frame::findEnumeration(image.typeName(type));
    const std::size_t count = image.word(type + kMemberCounts) >> 16;
    if (!enumeration || enumeration->members.size() != count)
        throw std::runtime_error("an enumeration is not the one of the tables");
    std::vector<std::uint32_t> texts;
    for (const frame::EnumerationMember& member : enumeration->members)
        texts.push_back(image.addText(automation::toUtf8(member.help)));

    const std::size_t members = image.word(type + kTypeMembers);
    std::size_t record = members + 4;
    for (std::size_t i = 0; i < count; ++i) {
        const std::uint32_t head = image.word(record);
        if ((head & 0xFFFF) != kVariableSize) throw std::runtime_error("a value has more to it than was expected");
        image.insert(record + kVariableSize, std::string(8, '\0'));
        image.setWord(record, head + 8);
        image.setWord(record + kVariableSize + 4, texts[i]);
        record += kVariableSize + 8;
    }
    // Behind the records stand, for each, its number, its name and its place.
    image.setWord(members, static_cast<std::uint32_t>(record - members - 4));
    for (std::size_t i = 0; i < count; ++i)
        image.setWord(record + (2 * count + i) * 4, static_cast<std::uint32_t>(i * (kVariableSize + 8)));
}

void finish(Image& image) {
    for (std::size_t i = 0; i < image.typeCount(); ++i) {
        const std::size_t type = image.type(i);
        const std::uint32_t kind = image.word(type + kTypeKind) & 0xF;
        const std::uint32_t flags = image.word(type + kTypeFlags);
        if (kind == kCoclass && (flags & kApplicationObject)) image.setWord(type + kTypeFlags, flags | kPredeclared);
        correctDefaults(image, type);
        if (kind == kEnumeration) addHelpOfValues(image, type);
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
