#pragma once

#include <ctime>

namespace tv::test {

/// Milliseconds of processor time that the process has taken since the object was made. What the machine does
/// besides does not count, so that a limit holds on a busy one too.
class TempoDeProcessador {
public:
    double decorrido() const { return 1000.0 * static_cast<double>(std::clock() - inicio_) / CLOCKS_PER_SEC; }
    double reinicia() {
        const double antes = decorrido();
        inicio_ = std::clock();
        return antes;
    }

private:
    std::clock_t inicio_ = std::clock();
};

/// How much longer work may take in this build: the sanitizers look at every access.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr double folgaDaMedida = 5;
#else
inline constexpr double folgaDaMedida = 1;
#endif

} // namespace tv::test
