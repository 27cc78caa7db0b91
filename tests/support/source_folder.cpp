#include "support/source_folder.h"

namespace tarncom32::tests {

std::filesystem::path sourceFolder() {
    return TARNCOM32_SOURCE_FOLDER;
}

} // namespace tarncom32::tests
