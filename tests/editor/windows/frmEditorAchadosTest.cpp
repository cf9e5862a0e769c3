#include "BancadaEditor.h"

#include "windows/Janelas.h"
#include "windows/TempoDeProcessador.h"

#include <gmock/gmock.h>

#include <vector>

// From a finding to its value in the text.

namespace tv::test {
namespace {

using ::testing::HasSubstr;

class frmEditorAchados : public BancadaEditor {
protected:
    /// Validates a document and opens it with what was found.
    void abreComAchados(std::string_view bytes) {
        clsValidador validador;
        validador.isValido(pasta.write("a.xml", bytes), pasta.posicao());
        abreCaminho(pasta.path() / "a.xml", validador.getResultado());
    }
    /// Clicks the finding about a value.
    void clicaAchadoDe(const QString& valor) const {
        const int total = grade().modelo().rowCount();
        for (int linha = 0; linha < total; ++linha) {
            if (grade().modelo().texto(linha, "valor") == valor) {
                clicaAchado(linha);
                return;
            }
        }
        FAIL() << "no finding about " << valor.toStdString();
    }
};

struct Documento {
    const char* nome;
    std::string bytes;
    std::u16string selecao;
};
void PrintTo(const Documento& caso, std::ostream* saida) {
    *saida << caso.nome;
}

class Selecao : public frmEditorAchados, public ::testing::WithParamInterface<Documento> {};

TEST_P(Selecao, IsExactlyTheValue) {
    abreComAchados(GetParam().bytes);
    clicaAchadoDe(QString::fromStdU16String(GetParam().selecao));
    EXPECT_EQ(caixa().textCursor().selectedText().toStdU16String(), GetParam().selecao);
    EXPECT_TRUE(caixa().hasFocus());
    EXPECT_TRUE(janela->salvo());
}

std::string crlf(std::string texto) {
    return text::replaceAll(texto, "\n", "\r\n");
}
std::string semLinhas(std::string texto) {
    std::erase_if(texto, [](char c) { return c == '\n' || c == '\t'; });
    return texto;
}
const std::string cedo = "<?xml version=\"1.0\" encoding=\"UTF-8\"?><posicao><fundo><header><cnpj>";

const std::vector<Documento> documentos{
    {"SomeLine", documento("20241399"), u"20241399"},
    {"CarriageReturns", crlf(documento("20241399")), u"20241399"},
    {"OneLine", semLinhas(documento("20241399")), u"20241399"},
    {"Accents", cedo + "São João é ção</cnpj><dt>2024139é</dt></header></fundo></posicao>", u"2024139\u00E9"},
    {"AccentsInLatin1",
     text::toLatin1("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?><posicao><fundo><header><cnpj>São João é "
                    "ção</cnpj><dt>2024139é</dt></header></fundo></posicao>"),
     u"2024139\u00E9"},
    {"BeyondTheBasicPlane",
     cedo + "\U0001F600\U0001F601x</cnpj><dt>a\U0001F602b</dt></header></fundo></posicao>", u"a\U0001F602b"},
    {"ParagraphSeparators", cedo + "\u2029x\u2028</cnpj><dt>20241399</dt></header></fundo></posicao>",
     u"20241399"},
    {"BlanksThatDoNotBreak", cedo + "\u00A0</cnpj><dt>2024\u00A099</dt></header></fundo></posicao>",
     u"2024\u00A099"},
    {"WithMark", "\xEF\xBB\xBF" + semLinhas(documento("20241399", "x", "")), u"20241399"},
    {"VeryLongLine", cedo + std::string(50'000, '7') + "</cnpj><dt>20241399</dt></header></fundo></posicao>",
     u"20241399"},
    {"LongLineOfManyElements",
     "<posicao><fundo><header><cnpj>1</cnpj><dt>20240115</dt></header>" +
         [] {
             std::string titulos;
             for (int i = 0; i < 2000; ++i) {
                 titulos += "<titulo><cod>A</cod><valor>" + std::string(i == 1500 ? "errado" : "1.5") +
                            "</valor><classe>1</classe></titulo>";
             }
             return titulos;
         }() +
         "</fundo></posicao>",
     u"errado"},
};

INSTANTIATE_TEST_SUITE_P(Documentos, Selecao, ::testing::ValuesIn(documentos),
                         [](const auto& caso) { return std::string(caso.param.nome); });

TEST_F(frmEditorAchados, TheLastLineIsReachedToo) {
    std::string bytes = "<posicao><fundo><header><cnpj>1</cnpj><dt>20240115</dt></header>\n";
    for (int i = 0; i < 5000; ++i) {
        bytes += "<titulo><cod>A</cod><valor>1</valor><classe>1</classe></titulo>\n";
    }
    bytes += "<titulo><cod>A</cod><valor>fim</valor><classe>1</classe></titulo></fundo></posicao>";
    abreComAchados(bytes);
    clicaAchadoDe(QStringLiteral("fim"));
    EXPECT_EQ(selecionado(), "fim");
    EXPECT_TRUE(caixa().viewport()->rect().contains(caixa().cursorRect().center()));
}

TEST_F(frmEditorAchados, ImpossiblePlacesDoNothingVisible) {
    for (const int linha : {0, -1, 99, 2'000'000'000}) {
        abre("<a>1</a>\n", achados(achado(linha, 5, "1")));
        janela->PlaceCursor(1, 2);
        const std::size_t antes = occurrences(registro(), "[13]");
        clicaAchado(0);
        EXPECT_EQ(caixa().SelStart(), 2) << linha;
        EXPECT_EQ(caixa().SelLength(), 0) << linha;
        EXPECT_FALSE(caixa().hasFocus()) << linha;
        EXPECT_EQ(occurrences(registro(), "[13]"), antes + 1) << linha;
        EXPECT_THAT(registro(), HasSubstr("frmEditor.grid_AfterRowActivate"));
        EXPECT_THAT(registro(), ::testing::Not(HasSubstr("Localização")));
        janela->closeWindow();
        EXPECT_TRUE(espera([this] { return janela.isNull(); }));
    }
}

TEST_F(frmEditorAchados, ALongValueAtTheTextsStartLeavesTheCaretAtOne) {
    abre("<a>1</a>\n", achados(achado(1, 1, "um valor bem longo")));
    janela->PlaceCursor(1, 5);
    clicaAchado(0);
    EXPECT_EQ(caixa().SelStart(), 1);
    EXPECT_EQ(caixa().SelLength(), 0);
    EXPECT_FALSE(caixa().hasFocus()); // there is nothing to stand on
    EXPECT_FALSE(registro().find("[13]") != std::string::npos);
}

TEST_F(frmEditorAchados, PlacesBehindTheTextCountAsItsEnd) {
    abre("<a>1</a>", achados(achado(1, 500, "1")));
    clicaAchado(0);
    EXPECT_EQ(caixa().SelStart(), 8);
    EXPECT_EQ(caixa().SelLength(), 0);
}

TEST_F(frmEditorAchados, AnotherClickOnTheActiveFindingLeadsThereAgain) {
    abre("<a>1</a>\n<b>2</b>", achados(achado(1, 5, "1"), achado(2, 5, "2")));
    clicaAchado(1);
    EXPECT_EQ(selecionado(), "2");
    QCoreApplication::processEvents();
    janela->PlaceCursor(1, 0);
    clicaAchado(1);
    EXPECT_EQ(selecionado(), "2");
}

TEST_F(frmEditorAchados, FortyThousandFindingsAreListedInASecond) {
    auto lista = std::make_shared<Resultados>();
    for (int i = 0; i < 40'000; ++i) {
        clsResultado um = achado(i + 1, 10, "valor");
        um.SetBoleto(pasta.posicao());
        lista->push_back(std::move(um));
    }
    const TempoDeProcessador tempo;
    abre("<a/>", lista);
    EXPECT_EQ(grade().modelo().rowCount(), 40'000);
    EXPECT_LT(tempo.decorrido(), 5000); // the benchmark measures; a test may be built with checks
}

TEST_F(frmEditorAchados, SelectionFollowsABreakOfALongLineOnlyUntilTheFileIsSaved) {
    std::string bytes = "<posicao><fundo><header><cnpj>1</cnpj><dt>20240115</dt></header>";
    for (int i = 0; i < 1000; ++i) {
        bytes += "<titulo><cod>A</cod><valor>1</valor><classe>1</classe></titulo>";
    }
    bytes += "<titulo><cod>A</cod><valor>fim</valor><classe>1</classe></titulo></fundo></posicao>";
    abreComAchados(bytes);
    clicaAchadoDe(QStringLiteral("fim"));
    EXPECT_EQ(selecionado(), "fim");
    caixa().moveCursor(QTextCursor::Start);
    digita("\n");
    Caixas caixas{QStringLiteral("OK")};
    janela->validarBoleto();
    clicaAchadoDe(QStringLiteral("fim"));
    EXPECT_EQ(selecionado(), "fim");
    EXPECT_THAT(noDisco(), HasSubstr("</titulo>\n<titulo>"));
}

} // namespace
} // namespace tv::test
