// Writers that are killed or run out of disk: whatever they reported as written must be there afterwards. The number
// of values that each writer writes is TARNCOM32_SOAK_WRITES, where that is set.

#include "platform/portable/sqlite_database.h"
#include "platform/portable/sqlite_registry.h"
#include "settings/registry_operations.h"
#include "support/temporary_folder.h"
#include "support/test_platform.h"
#include "writer_values.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <spawn.h>
#include <sys/mount.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace tarncom32::settings {
namespace {

namespace fs = std::filesystem;
using automation::String;

constexpr std::int32_t kRoot = platform::registry_root::kCurrentUser;

int writes() {
    const char* count = std::getenv("TARNCOM32_SOAK_WRITES");
    return count ? std::atoi(count) : 200;
}

/// A running `registry_writer`.
class Writer {
public:
    Writer(const fs::path& file, const char* key, int count, const char* fileLimit = nullptr) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
        std::string arguments[] = {TARNCOM32_REGISTRY_WRITER, file.string(), key, std::to_string(count),
                                   fileLimit ? fileLimit : ""};
        char* argv[] = {arguments[0].data(),
                        arguments[1].data(),
                        arguments[2].data(),
                        arguments[3].data(),
                        fileLimit ? arguments[4].data() : nullptr,
                        nullptr};
        const int failure = posix_spawn(&process_, argv[0], &actions, nullptr, argv, environ);
        posix_spawn_file_actions_destroy(&actions);
        close(ends[1]);
        output_ = fdopen(ends[0], "r");
        if (failure != 0 || !output_) throw std::runtime_error("registry_writer does not start");
    }
    ~Writer() {
        if (process_ > 0) {
            kill(process_, SIGKILL);
            waitpid(process_, nullptr, 0);
        }
        std::fclose(output_);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Waits until `count` values are reported as written; false when the output ends before.
    bool waitFor(int count) {
        char line[64];
        while (written_ < count && std::fgets(line, sizeof line, output_)) {
            if (std::sscanf(line, "error %d", &error_) != 1) written_ = std::atoi(line);
        }
        return written_ >= count;
    }
    void killNow() const { kill(process_, SIGKILL); }
    /// Reads the rest of the output and waits for the end.
    void finish() {
        waitFor(1 << 30);
        waitpid(process_, nullptr, 0);
        process_ = 0;
    }
    int written() const { return written_; } ///< values 1 to this are reported as written
    int error() const { return error_; }     ///< the error that ended it; 0: none

private:
    pid_t process_ = 0;
    std::FILE* output_ = nullptr;
    int written_ = 0;
    int error_ = 0;
};

/// The store as a later process finds it.
class Survivor {
public:
    explicit Survivor(const fs::path& file) : registry_(file, surroundings_.codePage) {}

    /// How many of the values 1 to `count` of a writer are there and right.
    int intact(const char* key, int count) {
        const String path = automation::fromUtf8(key);
        int found = 0;
        for (int i = 1; i <= count; ++i)
            found += operations_.getRegistryValue(kRoot, path, writerName(i)) == writerText(path, i);
        return found;
    }
    void write(const char* key) {
        operations_.saveProfileValue(automation::fromUtf8(key), u"Afterwards", u"works", kRoot);
    }

private:
    tests::TestPlatform surroundings_;
    platform::portable::SqliteRegistry registry_;
    platform::Platform platform_ = tests::withRegistry(surroundings_.platform, registry_);
    RegistryOperations operations_{platform_};
};

void expectSound(const fs::path& file) {
    platform::portable::SqliteDatabase database(
        file, [](int, std::string_view message) { throw std::runtime_error(std::string(message)); });
    EXPECT_EQ(database.integer("SELECT count(*) FROM pragma_integrity_check WHERE integrity_check <> 'ok'"), 0);
}

TEST(StoreSafety, OneOfTwoWritersIsKilledAndNoReportedValueIsLost) {
    for (const int percent : {5, 50, 90}) {
        const tests::TemporaryFolder folder;
        const fs::path file = folder.path() / "registry.sqlite";
        // Neither finds a file, so that they meet while they create it too.
        Writer victim(file, "Software\\Victim", writes());
        Writer other(file, "Software\\Other", writes());
        ASSERT_TRUE(victim.waitFor(writes() * percent / 100));
        victim.killNow();
        victim.finish();
        other.finish();
        EXPECT_GE(victim.written(), writes() * percent / 100);
        EXPECT_EQ(other.written(), writes());
        EXPECT_EQ(other.error(), 0);
        Survivor survivor(file);
        EXPECT_EQ(survivor.intact("Software\\Victim", victim.written()), victim.written());
        EXPECT_EQ(survivor.intact("Software\\Other", writes()), writes());
        survivor.write("Software\\Victim");
        expectSound(file);
    }
}

TEST(StoreSafety, AFileThatCannotGrowGivesANumberedErrorAndLosesNothing) {
    for (const char* limit : {"40000", "200000", "700000"}) {
        const tests::TemporaryFolder folder;
        const fs::path file = folder.path() / "registry.sqlite";
        Survivor(file).write("Software\\Before"); // the store itself fits
        Writer writer(file, "Software\\Writer", 100000, limit);
        writer.finish();
        EXPECT_TRUE(writer.error() == registry_errors::ItemMissing || writer.error() == registry_errors::CannotCreate)
            << writer.error() << " at " << limit;
        EXPECT_GT(writer.written(), 0);
        Survivor survivor(file);
        EXPECT_EQ(survivor.intact("Software\\Writer", writer.written()), writer.written());
        survivor.write("Software\\Writer");
        expectSound(file);
    }
}

/// A file system of a few hundred kilobytes; empty where this process may not mount one.
class SmallDisk {
public:
    SmallDisk() {
        if (mount("tmpfs", folder_.path().c_str(), "tmpfs", 0, "size=768k") == 0) mounted_ = true;
    }
    ~SmallDisk() {
        if (mounted_) umount2(folder_.path().c_str(), MNT_DETACH);
    }
    explicit operator bool() const { return mounted_; }
    fs::path path() const { return folder_.path(); }

private:
    tests::TemporaryFolder folder_;
    bool mounted_ = false;
};

TEST(StoreSafety, AFullDiskGivesANumberedErrorAndLosesNothing) {
    const SmallDisk disk;
    if (!disk) GTEST_SKIP() << "no file system can be mounted here: run it as root";
    const fs::path file = disk.path() / "registry.sqlite";
    const fs::path ballast = disk.path() / "ballast";
    std::ofstream(ballast) << std::string(100000, 'b');
    Survivor(file).write("Software\\Before");
    Writer one(file, "Software\\One", 100000);
    Writer two(file, "Software\\Two", 100000);
    one.finish();
    two.finish();
    for (const Writer* writer : {&one, &two})
        EXPECT_TRUE(writer->error() == registry_errors::ItemMissing || writer->error() == registry_errors::CannotCreate)
            << writer->error();
    EXPECT_GT(one.written() + two.written(), 0);
    // With a little space again everything is there, and writing goes on.
    fs::remove(ballast);
    Survivor survivor(file);
    EXPECT_EQ(survivor.intact("Software\\One", one.written()), one.written());
    EXPECT_EQ(survivor.intact("Software\\Two", two.written()), two.written());
    survivor.write("Software\\One");
    expectSound(file);
}

} // namespace
} // namespace tarncom32::settings
