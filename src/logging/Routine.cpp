#include "logging/Routine.h"

namespace tv {

clsLogger& requireLogger() {
    if (oLogger == nullptr) {
        throw Error(errc::objectNotSet, "oLogger", "O registro de eventos não foi criado");
    }
    return *oLogger;
}

void logFailure(const std::exception& failure) noexcept {
    if (Routine::isLogged()) {
        proceed([&] { oLogger->logFATAL(logText(failure)); });
    }
}

} // namespace tv
