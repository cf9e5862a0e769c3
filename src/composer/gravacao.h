#pragma once

#include <filesystem>
#include <string>
#include <string_view>

/// Puts a finished document in the place of an older one so that at any moment the one or the other stands
/// there whole.
namespace tv::gravacao {

/// The file operations of a save. Tests let one of them fail. Failures throw Error as `files` does.
class Operacoes {
public:
    virtual ~Operacoes() = default;
    virtual bool existe(const std::filesystem::path& arquivo);
    virtual std::string le(const std::filesystem::path& arquivo);
    /// Replaces the file in one step, flushed to disk.
    virtual void substitui(const std::filesystem::path& arquivo, std::string_view bytes);
    virtual void apaga(const std::filesystem::path& arquivo);
};

/// Moves `temporario` over `destino`. What stood there goes to today's copy first, in place of an earlier
/// copy of the day. On a failure `destino` is as it was and `temporario` still there; only taking
/// `temporario` away may fail without a word.
void grava(const std::filesystem::path& temporario, const std::filesystem::path& destino,
           Operacoes& operacoes);
void grava(const std::filesystem::path& temporario, const std::filesystem::path& destino);

} // namespace tv::gravacao
