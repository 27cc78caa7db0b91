#include "standin/drawing/zip_archive.h"

#include "standin/drawing/drawing_error.h"
#include "standin/drawing/part_name.h"

#include <zip.h>

#include <array>
#include <cstring>
#include <fstream>

namespace tarncom32::standin::drawing {

namespace {

std::string utf8(const std::filesystem::path& path) {
    const std::u8string text = path.u8string();
    return {text.begin(), text.end()};
}

// What a file that is no zip archive probably is, judged by its first bytes, and what to do about it.
std::string notAnArchive(std::string_view head) {
    if (head.starts_with("\xD0\xCF\x11\xE0"))
        return "is a drawing in Visio's binary format, or encrypted; save it as .vsdx first";
    if (head.starts_with("PK")) return "is a damaged or truncated zip archive; fetch it again";
    if (head.find("<VisioDocument") != std::string_view::npos)
        return "is a drawing in Visio's older XML format; save it as .vsdx first";
    return "is not a Visio package (it is no zip archive); open a .vsdx, .vsdm, .vssx, .vssm, .vstx or .vstm file";
}

std::string limitText(std::uint64_t bytes) {
    return bytes >= (1u << 20) ? std::to_string(bytes >> 20) + " MiB" : std::to_string(bytes) + " bytes";
}

} // namespace

void PartStream::Close::operator()(zip_file* file) const noexcept {
    zip_fclose(file);
}

void ZipArchive::Discard::operator()(zip* archive) const noexcept {
    zip_discard(archive);
}

PartStream::PartStream(ZipArchive& archive, zip_file* file, std::uint64_t packedBytes)
    : archive_(&archive), file_(file), packedBytes_(packedBytes) {}

int PartStream::read(char* buffer, int size) noexcept {
    if (failure_ != Failure::None) return -1;
    const zip_int64_t count = zip_fread(file_.get(), buffer, static_cast<zip_uint64_t>(size));
    if (count < 0) {
        failure_ = Failure::Damaged;
        return -1;
    }
    const Limits& limits = archive_->limits_;
    bytes_ += static_cast<std::uint64_t>(count);
    archive_->totalBytes_ += static_cast<std::uint64_t>(count);
    if (bytes_ > limits.maxPartBytes)
        failure_ = Failure::PartTooBig;
    else if (archive_->totalBytes_ > limits.maxTotalBytes)
        failure_ = Failure::TotalTooBig;
    else if (bytes_ > limits.ratioFreeBytes && bytes_ / limits.maxRatio > packedBytes_)
        failure_ = Failure::Bomb;
    return failure_ == Failure::None ? static_cast<int>(count) : -1;
}

bool PartStream::drain() noexcept {
    std::array<char, 4096> buffer{};
    int count = 0;
    while ((count = read(buffer.data(), static_cast<int>(buffer.size()))) > 0) {
    }
    return count == 0;
}

std::string PartStream::problem() const {
    const Limits& limits = archive_->limits_;
    switch (failure_) {
    case Failure::None:
        return {};
    case Failure::Damaged:
        return std::string("cannot be unpacked (") + zip_error_strerror(zip_file_get_error(file_.get())) +
               "); fetch the file again";
    case Failure::PartTooBig:
        return "unpacks to more than " + limitText(limits.maxPartBytes);
    case Failure::TotalTooBig:
        return "makes the package unpack to more than " + limitText(limits.maxTotalBytes) + " in all";
    case Failure::Bomb:
        return "unpacks to more than " + std::to_string(limits.maxRatio) +
               " times its packed size, as no drawing does (a zip bomb)";
    }
    return {};
}

ZipArchive::ZipArchive(const std::filesystem::path& path, const Limits& limits) : label_(utf8(path)), limits_(limits) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (!std::filesystem::exists(status)) fail("", "does not exist, or cannot be reached");
    if (!std::filesystem::is_regular_file(status)) fail("", "is not a file");
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error) fail("", "cannot be read (" + error.message() + ")");
    if (size > limits_.maxFileBytes) fail("", "is larger than " + limitText(limits_.maxFileBytes));

    int code = 0;
    zip_.reset(zip_open(label_.c_str(), ZIP_RDONLY, &code));
    if (!zip_) {
        std::array<char, 512> head{};
        std::ifstream stream(path, std::ios::binary);
        if (!stream) fail("", "cannot be opened; look at its permissions");
        stream.read(head.data(), static_cast<std::streamsize>(head.size()));
        fail("", notAnArchive({head.data(), static_cast<std::size_t>(stream.gcount())}));
    }
    readDirectory();
}

ZipArchive::ZipArchive(std::span<const std::byte> bytes, std::string label, const Limits& limits)
    : label_(std::move(label)), limits_(limits) {
    if (bytes.size() > limits_.maxFileBytes) fail("", "is larger than " + limitText(limits_.maxFileBytes));
    zip_error_t error{};
    zip_source_t* source = zip_source_buffer_create(bytes.data(), bytes.size(), 0, &error);
    if (source == nullptr) throw std::bad_alloc();
    zip_.reset(zip_open_from_source(source, ZIP_RDONLY, &error));
    zip_error_fini(&error);
    if (!zip_) {
        zip_source_free(source);
        fail("", notAnArchive({reinterpret_cast<const char*>(bytes.data()), std::min<std::size_t>(bytes.size(), 512)}));
    }
    readDirectory();
}

void ZipArchive::readDirectory() {
    const zip_int64_t count = zip_get_num_entries(zip_.get(), 0);
    if (count > limits_.maxParts) fail("", "has more than " + std::to_string(limits_.maxParts) + " entries");
    entries_.reserve(static_cast<std::size_t>(count));
    for (zip_uint64_t i = 0; i < static_cast<zip_uint64_t>(count); ++i) {
        const char* name = zip_get_name(zip_.get(), i, 0);
        if (name == nullptr) continue;
        // Two parts of one name: which of them counts would depend on who reads the file.
        if (!entries_.emplace(partKey(name), i).second) fail(name, "stands in the package twice");
    }
}

bool ZipArchive::contains(std::string_view part) const {
    return entries_.contains(partKey(part));
}

PartStream ZipArchive::open(std::string_view part) {
    const auto entry = entries_.find(partKey(part));
    if (entry == entries_.end()) fail(part, "is missing from the package");

    zip_stat_t stat{};
    zip_stat_init(&stat);
    if (zip_stat_index(zip_.get(), entry->second, 0, &stat) != 0) fail(part, "cannot be found in the damaged package");
    if ((stat.valid & ZIP_STAT_ENCRYPTION_METHOD) != 0 && stat.encryption_method != ZIP_EM_NONE)
        fail(part, "is encrypted; save the drawing without a password");
    if ((stat.valid & ZIP_STAT_SIZE) != 0 && stat.size > limits_.maxPartBytes)
        fail(part, "unpacks to more than " + limitText(limits_.maxPartBytes));

    zip_file* file = zip_fopen_index(zip_.get(), entry->second, 0);
    if (file == nullptr)
        fail(part, std::string("cannot be unpacked (") + zip_strerror(zip_.get()) + "); fetch the file again");
    return {*this, file, (stat.valid & ZIP_STAT_COMP_SIZE) != 0 ? stat.comp_size : 0};
}

void ZipArchive::fail(std::string_view part, std::string_view problem) const {
    throw DrawingError(label_, part, problem);
}

} // namespace tarncom32::standin::drawing
