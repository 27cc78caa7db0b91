#pragma once

#include "standin/drawing/limits.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>

struct zip;
struct zip_file;

namespace tarncom32::standin::drawing {

class ZipArchive;

/// The unpacked bytes of one part, in order. It stops as soon as a limit is passed, whatever size the archive claims.
class PartStream {
public:
    /// Up to `size` bytes into `buffer`: how many there were, 0 at the end, -1 once something is wrong (see `problem`).
    /// Throws nothing, so that a C parser can call it.
    [[nodiscard]] int read(char* buffer, int size) noexcept;

    /// Reads what is left, by which the part's checksum is verified. False once something is wrong.
    [[nodiscard]] bool drain() noexcept;

    /// What is wrong with the part, "" as long as nothing is.
    [[nodiscard]] std::string problem() const;

private:
    friend class ZipArchive;
    enum class Failure { None, Damaged, PartTooBig, TotalTooBig, Bomb };
    struct Close {
        void operator()(zip_file* file) const noexcept;
    };

    PartStream(ZipArchive& archive, zip_file* file, std::uint64_t packedBytes);

    ZipArchive* archive_;
    std::unique_ptr<zip_file, Close> file_;
    std::uint64_t packedBytes_;
    std::uint64_t bytes_ = 0;
    Failure failure_ = Failure::None;
};

/// A zip file that is read and never written. Every failure is a DrawingError with the file's name.
class ZipArchive {
public:
    /// A file on the disk, which is read piece by piece.
    ZipArchive(const std::filesystem::path& path, const Limits& limits);

    /// A file in memory, which must outlive the archive; `label` stands for its name in messages.
    ZipArchive(std::span<const std::byte> bytes, std::string label, const Limits& limits);

    /// Whether there is such a part; ASCII case does not matter.
    [[nodiscard]] bool contains(std::string_view part) const;

    /// Opens a part. Raises when it is missing, encrypted, or declared larger than the limits allow.
    [[nodiscard]] PartStream open(std::string_view part);

    /// The name for messages.
    [[nodiscard]] const std::string& label() const noexcept { return label_; }

    /// The limits that the archive was opened with.
    [[nodiscard]] const Limits& limits() const noexcept { return limits_; }

    /// Raises a DrawingError about `part` ("" for the file as a whole).
    [[noreturn]] void fail(std::string_view part, std::string_view problem) const;

private:
    friend class PartStream;
    struct Discard {
        void operator()(zip* archive) const noexcept;
    };

    void readDirectory();

    std::string label_;
    Limits limits_;
    std::unique_ptr<zip, Discard> zip_;
    std::unordered_map<std::string, std::uint64_t> entries_; // part key to index
    std::uint64_t totalBytes_ = 0;
};

} // namespace tarncom32::standin::drawing
