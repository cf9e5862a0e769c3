#include "platform/CompoundFile.h"
#include "platform/Error.h"
#include "platform/Workbook.h"

#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

#include <memory>

namespace tv::compound {
namespace {

struct Release {
    void operator()(void* object) const noexcept { g_object_unref(object); }
};
template<typename T>
using Held = std::unique_ptr<T, Release>;

void start() {
    [[maybe_unused]] static const bool started = (gsf_init(), true);
}

} // namespace

std::string pack(std::string stream) {
    start();
    const Held<GsfOutput> memory(gsf_output_memory_new());
    const Held<GsfOutfile> file(gsf_outfile_msole_new(memory.get()));
    const Held<GsfOutput> child(gsf_outfile_new_child(file.get(), "Workbook", FALSE));
    const bool good = gsf_output_write(child.get(), stream.size(),
                                       reinterpret_cast<const guint8*>(stream.data())) != FALSE &&
                      gsf_output_close(child.get()) != FALSE &&
                      gsf_output_close(reinterpret_cast<GsfOutput*>(file.get())) != FALSE;
    if (!good) {
        throw Error(errc::workbookFailure, "Workbook", "Não foi possível montar o arquivo da planilha");
    }
    stream = {};
    const guint8* bytes = gsf_output_memory_get_bytes(reinterpret_cast<GsfOutputMemory*>(memory.get()));
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(gsf_output_size(memory.get()))};
}

} // namespace tv::compound
