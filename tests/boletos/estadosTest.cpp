// The exit status of `boletos` for each way in which a call can end, on the shipped application folder.

#include "platform/Files.h"

#include <gtest/gtest.h>

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <ostream>
#include <string>

namespace tv {
namespace {

namespace fs = std::filesystem;

const std::string folder = TV_BINARY_DIR;
const std::string samples = folder + "/amostras/arquivoposicao_4_01/";
const std::string sound = samples + "valido_pequeno.xml";
const std::string faulty = samples + "errado_tabela.xml";

struct Call {
    std::string name;
    std::string arguments;
    int status;
};

std::ostream& operator<<(std::ostream& out, const Call& call) {
    return out << call.arguments;
}

int statusOf(const std::string& arguments) {
    const std::string command = "'" + folder + "/boletos' " + arguments + " >/dev/null 2>&1 </dev/null";
    const int status = std::system(command.c_str()); // NOLINT(cert-env33-c): our own program and files
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

class Estado : public testing::TestWithParam<Call> {};

TEST_P(Estado, IsTheOneThatTheCallEarns) {
    EXPECT_EQ(statusOf(GetParam().arguments), GetParam().status);
}

const std::string validar = "validar --layout arquivoposicao_4_01 ";

INSTANTIATE_TEST_SUITE_P(
    Chamadas, Estado,
    testing::Values(Call{"help", "--help", 0}, Call{"version", "--version", 0}, Call{"layouts", "layouts", 0},
                    Call{"one_sound_file", validar + sound, 0},
                    Call{"layout_in_other_case", "validar --layout ARQUIVOPOSICAO_4_01 " + sound, 0},
                    Call{"one_faulty_file", validar + faulty, 1},
                    Call{"a_faulty_file_among_sound_ones", validar + sound + " " + faulty + " " + sound, 1},
                    Call{"a_document_of_another_layout", "validar --layout movimento_1_00 " + sound, 1},
                    Call{"a_file_that_is_not_there", validar + "nada.xml", 2},
                    Call{"a_folder", validar + "/tmp", 2},
                    Call{"an_unreadable_file_and_a_faulty_one", validar + "nada.xml " + faulty, 2},
                    Call{"no_command", "", 2}, Call{"unknown_command", "conferir", 2},
                    Call{"no_layout", "validar " + sound, 2}, Call{"no_file", validar, 2},
                    Call{"unknown_layout", "validar --layout outro " + sound, 2},
                    Call{"unknown_format", validar + "--formato pdf " + sound, 2},
                    Call{"no_catalog", "layouts --pasta /nada", 2},
                    Call{"a_full_device", validar + "--saida /dev/full " + sound, 2}),
    [](const auto& call) { return call.param.name; });

} // namespace
} // namespace tv
