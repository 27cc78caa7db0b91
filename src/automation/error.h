#pragma once

#include "automation/string.h"

#include <cstdint>
#include <exception>
#include <memory>

namespace tarncom32::automation {

/// Error numbers as automation hosts know them.
namespace errors {
inline constexpr std::int32_t InvalidProcedureCall = 5;
inline constexpr std::int32_t Overflow = 6;
inline constexpr std::int32_t OutOfMemory = 7;
inline constexpr std::int32_t SubscriptOutOfRange = 9;
inline constexpr std::int32_t ArrayFixedOrLocked = 10;
inline constexpr std::int32_t DivisionByZero = 11;
inline constexpr std::int32_t TypeMismatch = 13;
inline constexpr std::int32_t InternalError = 51;
inline constexpr std::int32_t BadFileName = 52;
inline constexpr std::int32_t FileNotFound = 53;
inline constexpr std::int32_t FileAlreadyOpen = 55;
inline constexpr std::int32_t DeviceIo = 57;
inline constexpr std::int32_t FileAlreadyExists = 58;
inline constexpr std::int32_t DiskFull = 61;
inline constexpr std::int32_t PermissionDenied = 70;
inline constexpr std::int32_t PathFileAccess = 75;
inline constexpr std::int32_t PathNotFound = 76;
inline constexpr std::int32_t ObjectNotSet = 91;
inline constexpr std::int32_t InvalidUseOfNull = 94;
inline constexpr std::int32_t ResourceNotFound = 326;
inline constexpr std::int32_t CannotCreateObject = 429;
inline constexpr std::int32_t NoAutomationName = 432;
inline constexpr std::int32_t NoSuchMember = 438;
inline constexpr std::int32_t ActionNotSupported = 445;
inline constexpr std::int32_t NamedArgumentNotFound = 448;
inline constexpr std::int32_t ArgumentNotOptional = 449;
inline constexpr std::int32_t WrongArgumentCount = 450;
inline constexpr std::int32_t NotACollection = 451;
inline constexpr std::int32_t DuplicateKey = 457;
inline constexpr std::int32_t UnsupportedType = 458;
} // namespace errors

/// A failure that automation callers see: a number, a description, and whether it names its source.
///
/// A number from 1 to 65535 is a host's own error number and crosses COM as 0x800A0000 + number; a negative number is
/// an HRESULT. An error that came with an HRESULT, from a foreign object say, crosses with that one unchanged, and
/// running out of memory always as E_OUTOFMEMORY. Errors are copied, and those with a number's own description made,
/// without memory.
class Error : public std::exception {
public:
    /// `number` with the description that hosts show for it ("Application-defined or object-defined error" when they
    /// have none).
    explicit Error(std::int32_t number) noexcept : number_(number) {}
    Error(std::int32_t number, StringView description);
    /// An error that names no source to those who ask for it; others name this library.
    static Error withoutSource(std::int32_t number, StringView description);
    /// The error behind a failing HRESULT: 0x800A.... and COM's well-known failures become the host's numbers, every
    /// other stays. Its description is that of the number.
    static Error fromHresult(std::int32_t hresult) noexcept;
    /// The same for one that another object raised, with its own description; an empty one stays empty.
    static Error fromHresult(std::int32_t hresult, StringView description);

    std::int32_t number() const noexcept { return number_; }
    /// A NUL stands behind it.
    StringView description() const noexcept;
    bool namesSource() const noexcept { return namesSource_; }
    /// The HRESULT by which the error crosses COM.
    std::int32_t hresult() const noexcept;
    /// The description as UTF-8.
    const char* what() const noexcept override;

private:
    struct Description {
        String text;
        std::string utf8;
    };
    std::int32_t number_;
    std::int32_t origin_ = 0; ///< the HRESULT that it came with; 0 for none
    bool namesSource_ = true;
    std::shared_ptr<const Description> description_; ///< null for the number's own
};

/// An argument that does not convert to its parameter, or is missing: the failure and the argument's place, from 0.
class ArgumentError final : public Error {
public:
    ArgumentError(const Error& error, std::size_t index) noexcept : Error(error), index_(index) {}
    std::size_t index() const noexcept { return index_; }

private:
    std::size_t index_;
};

/// The exception that is being handled, as an `Error`: 7 for memory that ran out, 51 with its text for one of the C++
/// library. For use in a handler.
Error errorInFlight() noexcept;

/// The text that hosts show for an error number; "Application-defined or object-defined error" for one they do not
/// know. A NUL stands behind it.
StringView descriptionOf(std::int32_t number) noexcept;

} // namespace tarncom32::automation
