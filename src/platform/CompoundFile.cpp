#include "platform/CompoundFile.h"

#include "platform/CompoundCheck.h"
#include "platform/Error.h"
#include "platform/Workbook.h"
#include "platform/text.h"

#include <gsf/gsf-infile-msole.h>
#include <gsf/gsf-infile.h>
#include <gsf/gsf-input-memory.h>
#include <gsf/gsf-outfile-msole.h>
#include <gsf/gsf-outfile.h>
#include <gsf/gsf-output-memory.h>
#include <gsf/gsf-utils.h>

#include <memory>

namespace tv::compound {
namespace {

constexpr const char* streamName = "Workbook";

struct Release {
    void operator()(void* object) const noexcept { g_object_unref(object); }
};
template<typename T>
using Held = std::unique_ptr<T, Release>;

[[noreturn]] void fail(const char* reason) {
    throw Error(errc::workbookFailure, "Workbook", reason);
}

void start() {
    [[maybe_unused]] static const bool started = (gsf_init(), true);
}

const guint8* bytesOf(std::string_view text) noexcept {
    return reinterpret_cast<const guint8*>(text.data());
}

GsfOutput* asOutput(GsfOutfile* file) noexcept {
    return reinterpret_cast<GsfOutput*>(file);
}

} // namespace

std::string pack(std::string stream) {
    start();
    const Held<GsfOutput> memory(gsf_output_memory_new());
    const Held<GsfOutfile> file(gsf_outfile_msole_new(memory.get()));
    const Held<GsfOutput> child(gsf_outfile_new_child(file.get(), streamName, FALSE));
    const bool good = gsf_output_write(child.get(), stream.size(), bytesOf(stream)) != FALSE &&
                      gsf_output_close(child.get()) != FALSE &&
                      gsf_output_close(asOutput(file.get())) != FALSE;
    if (!good) {
        fail("A planilha não coube no arquivo");
    }
    stream = {};
    const guint8* bytes = gsf_output_memory_get_bytes(reinterpret_cast<GsfOutputMemory*>(memory.get()));
    return {reinterpret_cast<const char*>(bytes), static_cast<std::size_t>(gsf_output_size(memory.get()))};
}

std::string unpack(std::string_view bytes) {
    check(bytes);
    start();
    const Held<GsfInput> input(
        gsf_input_memory_new(bytesOf(bytes), static_cast<gsf_off_t>(bytes.size()), FALSE));
    const Held<GsfInfile> file(gsf_infile_msole_new(input.get(), nullptr));
    if (!file) {
        fail("o arquivo está corrompido");
    }
    for (int i = 0; i < gsf_infile_num_children(file.get()); ++i) {
        const char* name = gsf_infile_name_by_index(file.get(), i);
        if (name == nullptr || !text::equalsNoCase(name, streamName)) {
            continue;
        }
        const Held<GsfInput> child(gsf_infile_child_by_index(file.get(), i));
        const auto size = child ? static_cast<std::size_t>(gsf_input_size(child.get())) : 0;
        std::string stream(size <= bytes.size() ? size : 0, '\0');
        if (stream.empty() ||
            gsf_input_read(child.get(), size, reinterpret_cast<guint8*>(stream.data())) == nullptr) {
            fail("o arquivo está corrompido");
        }
        return stream;
    }
    fail("o arquivo não contém uma planilha do Excel 97-2003");
}

} // namespace tv::compound
