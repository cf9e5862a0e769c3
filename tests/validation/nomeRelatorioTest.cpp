#include "validation/nomeRelatorio.h"

#include <gtest/gtest.h>

namespace tv {
namespace {

struct Nome {
    const char* caso;
    const char* temporario;
    const char* relatorio;
};

void PrintTo(const Nome& nome, std::ostream* saida) {
    *saida << nome.caso;
}

class NomeRelatorioTest : public testing::TestWithParam<Nome> {};

TEST_P(NomeRelatorioTest, GivesThePathOfThePage) {
    EXPECT_EQ(nomeRelatorio(GetParam().temporario).string(), GetParam().relatorio);
}

INSTANTIATE_TEST_SUITE_P(
    Names, NomeRelatorioTest,
    testing::Values(Nome{"Plain", "/dados/kvo1A2B.TMP", "/dados/KVO1A2B.HTM"},
                    Nome{"FoldersKeepTheirLetters", "/home/ana/Torva/kvo0001.TMP",
                         "/home/ana/Torva/KVO0001.HTM"},
                    Nome{"SuffixInSmallLetters", "/dados/kvo1a2b.tmp", "/dados/KVO1A2B.HTM"},
                    Nome{"FolderWithTheSuffix", "/dados.TMP/torva/kvo1.TMP", "/dados.HTM/torva/KVO1.HTM"},
                    Nome{"FolderWithTheSuffixInSmallLetters", "/a.tmp/kvo1.TMP", "/a.HTM/KVO1.HTM"},
                    Nome{"SuffixInTheMiddleOfAFolder", "/a.Tmpx/b/kvo1.TMP", "/a.HTMx/b/KVO1.HTM"},
                    Nome{"SeveralFolders", "/a.tmp/b.TMP/kvo1.TMP", "/a.HTM/b.HTM/KVO1.HTM"},
                    Nome{"FolderWithoutThePoint", "/tmp/kvo1.TMP", "/tmp/KVO1.HTM"},
                    Nome{"AccentsOfFoldersStay", "/posições/çã.tmp/kvo1.TMP", "/posições/çã.HTM/KVO1.HTM"},
                    Nome{"AccentsOfTheNameGrow", "/a/kvoção.TMP", "/a/KVOÇÃO.HTM"},
                    Nome{"NameAlone", "kvo1.TMP", "KVO1.HTM"}, Nome{"Root", "/kvo1.TMP", "/KVO1.HTM"},
                    Nome{"Nothing", "", ""}),
    [](const auto& qual) { return std::string(qual.param.caso); });

} // namespace
} // namespace tv
