#include "validation/windows/SandboxWeb.h"

#include "logging/Routine.h"

#include <QByteArray>

#include <array>
#include <cstddef>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <sched.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tv::sandboxWeb {

namespace {

bool desligada() {
    return qEnvironmentVariableIntValue("QTWEBENGINE_DISABLE_SANDBOX") != 0 ||
           qgetenv("QTWEBENGINE_CHROMIUM_FLAGS").contains("--no-sandbox");
}

bool escreve(const char* arquivo, const char* texto) {
    const int saida = ::open(arquivo, O_WRONLY | O_CLOEXEC); // NOLINT(cppcoreguidelines-pro-type-vararg)
    if (saida < 0) {
        return false;
    }
    const std::size_t tamanho = std::strlen(texto);
    const bool certo = ::write(saida, texto, tamanho) == static_cast<ssize_t>(tamanho);
    ::close(saida);
    return certo;
}

/// Does what the engine's sandbox does first: a user namespace of its own, in which it is the master of
/// further namespaces. Runs in a process of its own, which changes nothing for this one.
bool separa(const char* mapaDeUsuario, const char* mapaDeGrupo) {
    return ::unshare(CLONE_NEWUSER) == 0 && escreve("/proc/self/setgroups", "deny") &&
           escreve("/proc/self/uid_map", mapaDeUsuario) && escreve("/proc/self/gid_map", mapaDeGrupo) &&
           ::unshare(CLONE_NEWNET | CLONE_NEWPID) == 0;
}

bool temEspacosDeNomes() {
    std::array<char, 32> usuario{};
    std::array<char, 32> grupo{};
    static_cast<void>(std::snprintf(usuario.data(), usuario.size(), "%u %u 1", ::getuid(), ::getuid()));
    static_cast<void>(std::snprintf(grupo.data(), grupo.size(), "%u %u 1", ::getgid(), ::getgid()));
    const pid_t filho = ::fork();
    if (filho < 0) {
        return false;
    }
    if (filho == 0) {
        ::_exit(separa(usuario.data(), grupo.data()) ? 0 : 1); // only calls that are safe after a fork
    }
    int estado = 0;
    while (::waitpid(filho, &estado, 0) < 0) {
        if (errno != EINTR) {
            return false;
        }
    }
    return WIFEXITED(estado) && WEXITSTATUS(estado) == 0;
}

} // namespace

bool verifica(std::string& motivo) {
    motivo.clear();
    if (desligada()) {
        return true;
    }
    if (::geteuid() == 0) {
        motivo = "o programa é executado como root";
    } else if (!temEspacosDeNomes()) {
        motivo = "o sistema não permite espaços de nomes de usuário";
    }
    return motivo.empty();
}

bool podeAbrir() {
    if (desligada()) {
        return true;
    }
    static const bool pode = [] {
        std::string motivo;
        const bool certo = verifica(motivo);
        if (!certo && oLogger != nullptr) {
            oLogger->logWARN(
                "O relatório é mostrado sem o navegador embutido, cujo isolamento não funciona aqui: " +
                motivo);
        }
        return certo;
    }();
    return pode;
}

} // namespace tv::sandboxWeb
