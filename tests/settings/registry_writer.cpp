// Writes values to a store and says on its output which of them are written, for tests that kill it or take its disk
// away:
//   registry_writer FILE KEY COUNT [BYTES]
// Each line is the number of a value that is safe. Ends with "error N" and code 3 at the first failure. No file may
// become larger than BYTES.

#include "platform/portable/portable_platform.h"
#include "settings/registry_operations.h"
#include "writer_values.h"

#include <sys/resource.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

using namespace tarncom32;

int main(int argc, char** argv) {
    if (argc < 4) return 2;
    if (argc > 4) {
        std::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{std::strtoul(argv[4], nullptr, 10), RLIM_INFINITY};
        if (setrlimit(RLIMIT_FSIZE, &limit) != 0) return 2;
    }
    setenv("TARNCOM32_REGISTRY", argv[1], 1);
    platform::portable::PortablePlatform platform;
    const settings::RegistryOperations operations(platform);
    const automation::String path = automation::fromUtf8(argv[2]);
    try {
        operations.createRegistryKey(platform::registry_root::kCurrentUser, path);
        for (int i = 1; i <= std::atoi(argv[3]); ++i) {
            operations.setRegistryValue(platform::registry_root::kCurrentUser, path, settings::writerName(i),
                                        settings::writerText(path, i));
            std::cout << i << std::endl;
        }
    } catch (const automation::Error& error) {
        std::cout << "error " << error.number() << std::endl;
        return 3;
    }
    return 0;
}
