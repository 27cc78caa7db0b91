#pragma once

#include "automation/error.h"

#include <cstdint>

/// Visio's own errors: 0x86DB0000 + code, with the texts that its reference prints.
namespace tarncom32::standin::visio_error {

using automation::Error;
using automation::StringView;

/// A cell that does not exist.
Error unexpectedEndOfFile();
/// An identifier that belongs to no item.
Error invalidSheetIdentifier();
/// A name that belongs to no item.
Error objectNameNotFound();
/// A position outside of the collection. The number is the one seen for item 1 of an empty selection; the text that
/// goes with it is not published, "Invalid parameter" is Visio's for arguments that it refuses.
Error positionOutOfRange();
/// An object that cannot do this. `reason` follows the text in parentheses.
Error inappropriateSource(StringView reason);
/// An argument that cannot be used for this. `reason` follows the text in parentheses.
Error inappropriateTarget(StringView reason);
/// Something that is switched off, as changing a guarded cell.
Error presentlyDisabled(StringView reason);
/// A value that is not accepted. `reason` follows the text in parentheses.
Error invalidParameter(StringView reason);
/// A name that another object has. The number is not published; COM's invalid argument stands in for it.
Error nameInUse(StringView name);
/// A file that is not there or is no drawing; `text` says which and why.
Error cannotOpen(StringView text);

} // namespace tarncom32::standin::visio_error
