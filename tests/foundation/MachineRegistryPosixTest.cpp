// What a machine folder's registry does that only a POSIX host can show: a
// running wineserver, and a write the file system refuses part way.
#include "foundation/MachineFolder.h"
#include "foundation/MachineRegistry.h"
#include "foundation/modRegistry.h"
#include "support/TempMachine.h"

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <csignal>

namespace glyphmoor::test {
namespace {

constexpr std::string_view kSettings = "HKEY_CURRENT_USER\\Software\\Veltrane\\Glyphmoor\\Settings";

// Holds a write lock on the lock file a wineserver for dir would hold, from a
// child process (a process never sees its own locks), until destroyed.
class FakeWineServer {
public:
    // where: which of the places a wineserver may keep its lock.
    FakeWineServer(const std::filesystem::path& dir, std::size_t where) {
        m_serverDir = WineServerDirs(dir).at(where);
        std::filesystem::create_directories(m_serverDir);
        int ready[2];
        int release[2];
        if (::pipe(ready) != 0 || ::pipe(release) != 0) {
            return;
        }
        m_child = ::fork();
        if (m_child == 0) {
            ::close(release[1]);  // so that the parent's close ends the read below
            ::close(ready[0]);
            const int fd = ::open((m_serverDir / "lock").c_str(), O_CREAT | O_WRONLY, 0600);
            struct flock lock {};
            lock.l_type = F_WRLCK;
            lock.l_whence = SEEK_SET;
            ::fcntl(fd, F_SETLK, &lock);
            char c = 1;
            (void)!::write(ready[1], &c, 1);
            (void)!::read(release[0], &c, 1);
            ::_exit(0);
        }
        char c = 0;
        (void)!::read(ready[0], &c, 1);
        m_release = release[1];
        ::close(ready[0]);
        ::close(ready[1]);
        ::close(release[0]);
    }
    ~FakeWineServer() {
        ::close(m_release);
        ::waitpid(m_child, nullptr, 0);
        std::error_code ec;
        std::filesystem::remove_all(m_serverDir.parent_path().filename().string().starts_with(".wine-")
                                        ? m_serverDir
                                        : m_serverDir.parent_path(),
                                    ec);
    }
    FakeWineServer(const FakeWineServer&) = delete;
    FakeWineServer& operator=(const FakeWineServer&) = delete;

private:
    std::filesystem::path m_serverDir;
    pid_t m_child = -1;
    int m_release = -1;
};

TEST(MachineRegistry, APrefixWithARunningWineServerIsRefusedForWriting) {
    for (std::size_t where : {0U, 1U}) {
        TempMachine folder;
        // Debian's Wine names its own folder in /tmp in the prefix.
        folder.Folder().Write("wineserver", "wine-glyphmoortest" + std::to_string(::getpid()));
        auto machine = folder.Open();
        const std::string before = folder.Folder().Read("user.reg");
        SetRegString(machine->Registry(), kSettings, "Left", "1");
        {
            FakeWineServer server(folder.Dir(), where);
            // Reading goes on.
            EXPECT_EQ(GetRegString(machine->Registry(), kSettings, "Left"), "1");
            Status saved = machine->Save();
            ASSERT_FALSE(saved.ok());
            EXPECT_NE(saved.reason().find(folder.Dir().string()), std::string::npos);
            EXPECT_NE(saved.reason().find("wineserver -k"), std::string::npos);
            EXPECT_EQ(folder.Folder().Read("user.reg"), before);
        }
        EXPECT_TRUE(machine->Save().ok());
        EXPECT_NE(folder.Folder().Read("user.reg"), before);
    }
}

TEST(MachineRegistry, AWriteThatFailsPartWayLeavesTheOldFile) {
    TempMachine folder;
    auto machine = folder.Open();
    SetRegBinary(machine->Registry(), "HKEY_CURRENT_USER\\Big", "b", std::string(4096, 'x'));
    const std::string before = folder.Folder().Read("user.reg");

    // Files may grow to 512 bytes only: the new hive cannot be written whole.
    struct rlimit old {};
    ::getrlimit(RLIMIT_FSIZE, &old);
    auto* previous = std::signal(SIGXFSZ, SIG_IGN);
    struct rlimit small = old;
    small.rlim_cur = 512;
    ::setrlimit(RLIMIT_FSIZE, &small);
    Status saved = machine->Save();
    ::setrlimit(RLIMIT_FSIZE, &old);
    std::signal(SIGXFSZ, previous);

    EXPECT_FALSE(saved.ok());
    EXPECT_EQ(folder.Folder().Read("user.reg"), before);
    for (const auto& entry : std::filesystem::directory_iterator(folder.Dir())) {
        EXPECT_NE(entry.path().extension(), ".tmp") << "a temporary file was left: " << entry.path();
    }
    // Nothing is lost: the change is still there to be saved.
    EXPECT_TRUE(machine->Save().ok());
    EXPECT_EQ(GetRegBinary(folder.Open()->Registry(), "HKEY_CURRENT_USER\\Big", "b"), std::string(4096, 'x'));
}

}  // namespace
}  // namespace glyphmoor::test
