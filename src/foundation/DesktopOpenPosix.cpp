#include "foundation/System.h"

#include <spawn.h>
#include <sys/wait.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <thread>

extern char** environ;

namespace glyphmoor {

namespace {

// How long xdg-open is given to say it found no handler. A handler found
// may keep it running (a browser started in the foreground): that is success.
constexpr auto kHandlerVerdict = std::chrono::milliseconds(1500);

}  // namespace

bool OpenWithDesktop(std::string_view pathOrAddress) {
    std::string program = "xdg-open";
    std::string argument(pathOrAddress);
    char* argv[] = {program.data(), argument.data(), nullptr};
    pid_t pid = 0;
    if (::posix_spawnp(&pid, "xdg-open", nullptr, nullptr, argv, environ) != 0) {
        return false;
    }
    // xdg-open ends with a non-zero status when no program opens the address
    // (3: "no method available"). The waiting thread reaps it whenever it ends.
    auto status = std::make_shared<std::promise<int>>();
    std::future<int> exit = status->get_future();
    std::thread([pid, status] {
        int wstatus = 0;
        const pid_t ended = ::waitpid(pid, &wstatus, 0);
        status->set_value(ended == pid && WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : -1);
    }).detach();
    if (exit.wait_for(kHandlerVerdict) != std::future_status::ready) {
        return true;
    }
    return exit.get() == 0;
}

}  // namespace glyphmoor
