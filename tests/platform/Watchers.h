#pragma once

#include <gtest/gtest.h>

#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/time.h>

#include <netinet/in.h>
#include <poll.h>
#include <unistd.h>

#include <cstdint>
#include <filesystem>
#include <fstream>
#include <string>

/// What looks on while something hostile is read.
namespace tv::test {

/// A server of this machine that nobody may call.
class Listener {
public:
    Listener()
        : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto* const plain = reinterpret_cast<sockaddr*>(&address);
        socklen_t size = sizeof address;
        EXPECT_EQ(::bind(socket_, plain, size), 0);
        EXPECT_EQ(::listen(socket_, 8), 0);
        EXPECT_EQ(::getsockname(socket_, plain, &size), 0);
        port_ = ntohs(address.sin_port);
    }
    ~Listener() { ::close(socket_); }
    Listener(const Listener&) = delete;
    Listener& operator=(const Listener&) = delete;

    /// An address of it.
    std::string url(const std::string& path = "x.xml") const {
        return "http://127.0.0.1:" + std::to_string(port_) + "/" + path;
    }
    /// True when somebody has tried to connect.
    bool wasCalled() const {
        pollfd waiting{socket_, POLLIN, 0};
        return ::poll(&waiting, 1, 0) != 0;
    }
    std::uint16_t port() const { return port_; }

private:
    int socket_;
    std::uint16_t port_ = 0;
};

/// A file that nobody may open.
class Watched {
public:
    explicit Watched(const std::filesystem::path& file)
        : notify_(::inotify_init1(IN_CLOEXEC | IN_NONBLOCK)) {
        EXPECT_GE(::inotify_add_watch(notify_, file.c_str(), IN_OPEN | IN_ACCESS), 0) << file;
    }
    ~Watched() { ::close(notify_); }
    Watched(const Watched&) = delete;
    Watched& operator=(const Watched&) = delete;

    bool wasOpened() const {
        pollfd waiting{notify_, POLLIN, 0};
        return ::poll(&waiting, 1, 0) != 0;
    }

private:
    int notify_;
};

/// How much more processor time and memory this build may take: the sanitizers look at every access and keep
/// what was freed.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr double slack = 5;
inline constexpr double keptMegabytes = 300; ///< Of freed memory, whatever the work.
#else
inline constexpr double slack = 1;
inline constexpr double keptMegabytes = 0;
#endif

/// Processor time and memory that a piece of work takes in this process.
class Cost {
public:
    Cost() {
        std::ofstream("/proc/self/clear_refs") << "5"; // the peak is counted from here on
        memory_ = status("VmRSS:");
        seconds_ = secondsNow();
    }
    double seconds() const { return secondsNow() - seconds_; }
    double megabytes() const { return (status("VmHWM:") - memory_) / 1024; }

    /// Fails the test when the work took more than this.
    void expectBelow(double seconds, double megabytes) const {
        EXPECT_LT(this->seconds(), seconds * slack);
        EXPECT_LT(this->megabytes(), megabytes * slack + keptMegabytes);
    }

private:
    static double secondsNow() {
        rusage used{};
        ::getrusage(RUSAGE_SELF, &used);
        const auto seconds = [](const timeval& t) {
            return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_usec) / 1e6;
        };
        return seconds(used.ru_utime) + seconds(used.ru_stime);
    }
    static double status(const std::string& name) {
        std::ifstream file("/proc/self/status");
        std::string word;
        double kilobytes = 0;
        while (file >> word) {
            if (word == name) {
                file >> kilobytes;
                break;
            }
        }
        return kilobytes;
    }

    double memory_ = 0;
    double seconds_ = 0;
};

} // namespace tv::test
