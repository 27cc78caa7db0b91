// Writers that are killed or run out of disk: whatever they reported as written must be there afterwards. The number
// of values that each writer writes is TARNCOM32_SOAK_WRITES, where that is set.

#include "platform/portable/sqlite_database.h"
#include "platform/portable/sqlite_registry.h"
#include "settings/registry_operations.h"
#include "support/temporary_folder.h"
#include "support/test_platform.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <cstdlib>
#include <fstream>

namespace tarncom32::settings {
namespace {

namespace fs = std::filesystem;
using namespace automation;

constexpr std::int32_t kRoot = platform::registry_root::kCurrentUser;
constexpr int kNoEnd = 100000;

int writes() {
    const char* count = std::getenv("TARNCOM32_SOAK_WRITES");
    return count ? std::atoi(count) : 200;
}

String nameOf(int number) {
    return u"Value " + decimalText(number);
}

/// Long ones now and then, so that some writes take several pages.
String valueOf(StringView path, int number) {
    const int length = number % 50 == 0 ? 900 : number % 7;
    return String(path) + u" " + decimalText(number) + u" " + String(static_cast<std::size_t>(length), u'x');
}

/// The store as each process opens it.
class Store {
public:
    explicit Store(const fs::path& file) : registry_(file, platform::westernCodePage()) {}

    void createKey(StringView path) { operations_.createRegistryKey(kRoot, path); }
    void write(StringView path, int number) {
        operations_.setRegistryValue(kRoot, path, nameOf(number), valueOf(path, number));
    }
    /// How many of the values 1 to `count` of a writer are there and right.
    int intact(StringView path, int count) {
        int found = 0;
        for (int i = 1; i <= count; ++i)
            found += operations_.getRegistryValue(kRoot, path, nameOf(i)) == valueOf(path, i);
        return found;
    }
    void save(StringView path) { operations_.saveProfileValue(path, u"Afterwards", u"works", kRoot); }

private:
    platform::portable::SqliteRegistry registry_;
    platform::Platform platform_{.registry = registry_};
    RegistryOperations operations_{platform_};
};

/// A process that writes the values 1 to `count`, and tells through a pipe which of them are written, or with which
/// error it ended, as a negative number. None of its files may become larger than `fileLimit`.
class Writer {
public:
    Writer(const fs::path& file, StringView path, int count, rlim_t fileLimit = RLIM_INFINITY) {
        int ends[2];
        if (pipe2(ends, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
        process_ = fork();
        if (process_ == 0) {
            std::signal(SIGXFSZ, SIG_IGN);
            const rlimit limit{fileLimit, RLIM_INFINITY};
            const auto tell = [&](int what) {
                if (::write(ends[1], &what, sizeof what) != sizeof what) _exit(2);
            };
            if (setrlimit(RLIMIT_FSIZE, &limit) != 0) _exit(2);
            try {
                Store store(file);
                store.createKey(path);
                for (int i = 1; i <= count; ++i) {
                    store.write(path, i);
                    tell(i);
                }
            } catch (const Error& error) {
                tell(-error.number());
            }
            _exit(0);
        }
        close(ends[1]);
        output_ = ends[0];
        if (process_ < 0) throw std::runtime_error("no process");
    }
    ~Writer() {
        if (process_ > 0) {
            killNow();
            waitpid(process_, nullptr, 0);
        }
        close(output_);
    }
    Writer(const Writer&) = delete;
    Writer& operator=(const Writer&) = delete;

    /// Waits until `count` values are reported as written; false when the output ends before.
    bool waitFor(int count) {
        for (int told = 0; written_ < count && ::read(output_, &told, sizeof told) == sizeof told;)
            (told > 0 ? written_ : error_) = std::abs(told);
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
    int output_ = -1;
    int written_ = 0;
    int error_ = 0;
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
        Writer victim(file, u"Software\\Victim", writes());
        Writer other(file, u"Software\\Other", writes());
        ASSERT_TRUE(victim.waitFor(writes() * percent / 100));
        victim.killNow();
        victim.finish();
        other.finish();
        EXPECT_GE(victim.written(), writes() * percent / 100);
        EXPECT_EQ(other.written(), writes());
        EXPECT_EQ(other.error(), 0);
        Store survivor(file);
        EXPECT_EQ(survivor.intact(u"Software\\Victim", victim.written()), victim.written());
        EXPECT_EQ(survivor.intact(u"Software\\Other", writes()), writes());
        survivor.save(u"Software\\Victim");
        expectSound(file);
    }
}

/// Two writers that cannot be done fill the room that there is, and end with an error that says so. With a little space
/// again everything that they reported is there, and writing goes on.
void expectNothingLostWithoutRoom(const fs::path& folder, rlim_t fileLimit) {
    const fs::path file = folder / "registry.sqlite";
    const fs::path ballast = folder / "ballast";
    std::ofstream(ballast) << std::string(100000, 'b');
    Store(file).save(u"Software\\Before"); // the store itself fits
    Writer one(file, u"Software\\One", kNoEnd, fileLimit);
    Writer two(file, u"Software\\Two", kNoEnd, fileLimit);
    one.finish();
    two.finish();
    fs::remove(ballast);
    Store survivor(file);
    for (const auto& [writer, path] : {std::pair(&one, u"Software\\One"), {&two, u"Software\\Two"}}) {
        EXPECT_THAT(writer->error(), testing::AnyOf(registry_errors::ItemMissing, registry_errors::CannotCreate));
        EXPECT_EQ(survivor.intact(path, writer->written()), writer->written());
    }
    EXPECT_GT(one.written() + two.written(), 0);
    survivor.save(u"Software\\One");
    expectSound(file);
}

TEST(StoreSafety, AFileThatCannotGrowGivesANumberedErrorAndLosesNothing) {
    for (const rlim_t limit : {rlim_t{40000}, rlim_t{200000}, rlim_t{700000}})
        expectNothingLostWithoutRoom(tests::TemporaryFolder().path(), limit);
}

TEST(StoreSafety, AFullDiskGivesANumberedErrorAndLosesNothing) {
    const tests::TemporaryFolder disk;
    if (mount("tmpfs", disk.path().c_str(), "tmpfs", 0, "size=768k") != 0)
        GTEST_SKIP() << "no file system can be mounted here: run it as root";
    const std::shared_ptr<void> mounted(nullptr, [&](void*) { umount2(disk.path().c_str(), MNT_DETACH); });
    expectNothingLostWithoutRoom(disk.path(), RLIM_INFINITY);
}

} // namespace
} // namespace tarncom32::settings
