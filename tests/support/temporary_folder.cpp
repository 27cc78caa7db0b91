#include "support/temporary_folder.h"

#include <random>
#include <stdexcept>

namespace tarncom32::tests {

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    std::random_device random;
    for (int attempt = 0; attempt < 100; ++attempt) {
        path_ = fs::temp_directory_path() / ("tarncom32-test-" + std::to_string(random()) + std::to_string(random()));
        if (fs::create_directory(path_)) return;
    }
    throw std::runtime_error("no temporary folder can be made");
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

} // namespace tarncom32::tests
