#include "boletos/Program.h"

#include "platform/Files.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <stdexcept>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fcntl.h>

namespace boletos::test {

namespace {

std::filesystem::path newFolder() {
    std::string pattern = (std::filesystem::temp_directory_path() / "tv-boletos-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no folder for the program's outputs");
    }
    return pattern;
}

int openNew(const std::filesystem::path& file) {
    return ::open(file.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
}

} // namespace

Program::Program(const std::vector<std::string>& arguments, const Surroundings& surroundings)
    : folder_(newFolder()) {
    const std::string program =
        surroundings.program.empty() ? TV_BINARY_DIR "/boletos" : surroundings.program.string();
    std::vector<std::string> texts{program};
    texts.insert(texts.end(), arguments.begin(), arguments.end());
    std::vector<char*> argv;
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    const int out = surroundings.out >= 0 ? surroundings.out : openNew(folder_ / "out");
    const int err = surroundings.err >= 0 ? surroundings.err : openNew(folder_ / "err");

    pid_ = ::fork();
    if (pid_ == 0) {
        ::dup2(out, STDOUT_FILENO);
        ::dup2(err, STDERR_FILENO);
        const bool isThere = surroundings.folder.empty() || ::chdir(surroundings.folder.c_str()) == 0;
        if (isThere) {
            ::execv(program.c_str(), argv.data());
        }
        ::_exit(127);
    }
    if (surroundings.out < 0) {
        ::close(out);
    }
    if (surroundings.err < 0) {
        ::close(err);
    }
}

Program::~Program() {
    if (pid_ > 0) {
        ::kill(pid_, SIGKILL);
        ::waitpid(pid_, nullptr, 0);
    }
    std::error_code ignored;
    std::filesystem::remove_all(folder_, ignored);
}

void Program::send(int signal) const {
    ::kill(pid_, signal);
}

std::string Program::outSoFar() const {
    return tv::files::readAll(folder_ / "out");
}

Outcome Program::wait() {
    int how = 0;
    rusage used{};
    while (::wait4(pid_, &how, 0, &used) < 0 && errno == EINTR) {
    }
    pid_ = -1;
    Outcome outcome;
    outcome.status = WIFEXITED(how) ? WEXITSTATUS(how) : -1;
    const auto seconds = [](const timeval& t) {
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
    };
    outcome.seconds = seconds(used.ru_utime) + seconds(used.ru_stime);
    outcome.megabytes = static_cast<double>(used.ru_maxrss) / 1024;
    outcome.signal = WIFSIGNALED(how) ? WTERMSIG(how) : 0;
    outcome.out = std::filesystem::exists(folder_ / "out") ? tv::files::readAll(folder_ / "out") : "";
    outcome.err = std::filesystem::exists(folder_ / "err") ? tv::files::readAll(folder_ / "err") : "";
    return outcome;
}

} // namespace boletos::test
