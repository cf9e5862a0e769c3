#pragma once

#include "Relatorio.h"

#include <filesystem>
#include <memory>
#include <vector>

namespace boletos {

/// Checks a call's files. What it gives for each does not depend on how many are under way at a time, the key
/// text that piles up over the files included.
class Verificacao {
public:
    virtual ~Verificacao() = default;
    /// The next file's check, in the order of the files. Not to be called for more files than there are.
    virtual ArquivoValidado proximo() = 0;

    /// `jobs` files at a time, 1 or more. While a log is written it is one, so that the log tells the files
    /// in their order. The files must outlive the object.
    static std::unique_ptr<Verificacao> cria(const std::vector<std::filesystem::path>& arquivos,
                                             std::shared_ptr<const tv::clsBoleto> layout, int jobs);
};

} // namespace boletos
