// A day's log that somebody else has written into, and entries that are put behind it.
#include "Scratch.h"
#include "Target.h"

#include "logging/Routine.h"
#include "logging/clsLogger.h"
#include "platform/Clock.h"
#include "platform/Error.h"
#include "platform/XmlDocument.h"

namespace {

void logRun(const std::string& folder) {
    tv::oLogger = std::make_shared<tv::clsLogger>();
    tv::oLogger->setPath(folder);
    tv::oLogger->loggerFactory(tv::clsLogger::typeXML, tv::library::level::all);
    {
        const tv::Routine outer("frmValidador.btnValidar");
        const tv::Routine inner("clsValidador.isValido(a,b)");
        tv::oLogger->logWARN("Um <aviso> & \"outro\"");
    }
    const tv::Routine later("clsPlanilhaExcel.OpenPlan");
    tv::oLogger->logFATAL("Uma falha [91]");
    tv::oLogger->destroy();
    tv::oLogger.reset();
}

/// The name of the log's file, which a first run without foreign bytes leaves.
std::filesystem::path nameOf(const fuzz::Scratch& folder) {
    logRun(folder.text());
    return std::filesystem::directory_iterator(folder.path())->path().filename();
}

} // namespace

void readForeign(std::string_view bytes) {
    static const tv::clock::Frozen day(tv::clock::at(2024, 2, 29, 23, 59, 58));
    static const fuzz::Scratch folder;
    static const std::filesystem::path name = nameOf(folder);
    const std::filesystem::path file = folder.write(name.string(), bytes);
    tv::XmlDocument before;
    const bool wasSound = before.load(file);
    logRun(folder.text());
    tv::XmlDocument after;
    const bool isSound = after.load(file);
    require(wasSound == isSound, "a log is a document when it was one");
    require(wasSound || tv::files::readAll(file) == bytes, "a log that is no document stays as it is");
}
