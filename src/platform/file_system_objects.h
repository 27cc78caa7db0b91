#pragma once

#include "automation/object.h"

namespace tarncom32::platform {

/// Makes scripting file-system objects, which members reach by name only: `GetExtensionName(path)`,
/// `GetFileName(path)`, `GetSpecialFolder(2)` (the folder of temporary files, with its `Path`), `GetTempName()`, and
/// `CreateTextFile(name, overwrite)`, whose text stream has `Write(text)` and `Close()`.
class FileSystemObjects {
public:
    virtual ~FileSystemObjects() = default;
    /// A new object. Raises 429 when the platform has none.
    virtual automation::ObjectRef create() = 0;
};

} // namespace tarncom32::platform
