#include "Relatorio.h"
#include "Saida.h"

#include "platform/XmlDocument.h"

#include <array>
#include <cstdio>

namespace boletos {

namespace {

std::string segundos(double tempo) {
    std::array<char, 32> texto{};
    static_cast<void>(std::snprintf(texto.data(), texto.size(), "%.3f", tempo));
    return texto.data();
}

// Text that XML can hold: control characters become blanks.
std::string semControles(std::string texto) {
    for (char& c : texto) {
        if (static_cast<unsigned char>(c) < 0x20 && c != '\n' && c != '\t') {
            c = ' ';
        }
    }
    return texto;
}

class Junit final : public Relatorio {
public:
    explicit Junit(const Contexto& contexto)
        : saida_(contexto.saida)
        , layout_(contexto.layout->getTag())
        , documento_(tv::XmlDocument::create("testsuites"))
        , suite_(documento_.documentElement().appendElement("testsuite")) {}

    void arquivo(const ArquivoValidado& validado) override {
        tv::XmlNode caso = suite_.appendElement("testcase");
        caso.setAttribute("classname", layout_);
        caso.setAttribute("name", nomeVisivel(validado.arquivo));
        caso.setAttribute("time", segundos(validado.tempo.count()));
        ++casos_;
        tempo_ += validado.tempo.count();
        if (validado.valido) {
            return;
        }
        const bool naoRodou = !validado.verificado();
        ++(naoRodou ? erros_ : falhas_);
        const std::size_t total = validado.resultados->size();
        tv::XmlNode falha = caso.appendElement(naoRodou ? "error" : "failure");
        falha.setAttribute("type", naoRodou ? "NaoVerificado" : "Invalido");
        falha.setAttribute("message", std::to_string(total) + (total == 1 ? " resultado" : " resultados"));
        falha.setText(semControles(detalhes(validado)));
    }

    void termina() override {
        for (tv::XmlNode no : {documento_.documentElement(), suite_}) {
            no.setAttribute("name", layout_);
            no.setAttribute("tests", std::to_string(casos_));
            no.setAttribute("failures", std::to_string(falhas_));
            no.setAttribute("errors", std::to_string(erros_));
            no.setAttribute("time", segundos(tempo_));
        }
        saida_.escreve("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n" + documento_.xml() + "\n");
        saida_.termina();
    }

private:
    static std::string detalhes(const ArquivoValidado& validado) {
        std::string texto;
        for (const std::string& aviso : validado.avisos) {
            texto += "aviso: " + aviso + "\n";
        }
        for (const tv::clsResultado& resultado : *validado.resultados) {
            texto += std::to_string(resultado.linha()) + ":" + std::to_string(resultado.coluna()) + " " +
                     std::string(resultado.nomeTipo()) + " " + resultado.ErrorCode() + " " +
                     resultado.Titulo() + " " + resultado.TAGpath() + " '" + resultado.getValor() + "'\n";
        }
        return texto;
    }

    Saida saida_;
    std::string layout_;
    tv::XmlDocument documento_;
    tv::XmlNode suite_;
    std::size_t casos_ = 0;
    std::size_t falhas_ = 0;
    std::size_t erros_ = 0;
    double tempo_ = 0;
};

} // namespace

std::unique_ptr<Relatorio> relatorioJunit(const Contexto& contexto) {
    return std::make_unique<Junit>(contexto);
}

} // namespace boletos
