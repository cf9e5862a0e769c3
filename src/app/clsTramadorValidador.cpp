#include "app/clsTramadorValidador.h"

#include "app/Aplicacao.h"
#include "logging/Routine.h"
#include "platform/Error.h"
#include "platform/Files.h"
#include "platform/XmlDocument.h"
#include "platform/text.h"

#include <future>

namespace tv {
namespace {

std::int16_t loggerType(std::string_view type) {
    return text::upper(type) == "TXT" ? clsLogger::typeTXT : clsLogger::typeXML;
}

std::int16_t loggerLevel(std::string_view level) {
    const std::string name = text::upper(level);
    if (name == "INFO") {
        return library::level::info;
    }
    if (name == "WARN") {
        return library::level::warn;
    }
    if (name == "FATAL") {
        return library::level::fatal;
    }
    if (name == "ALL") {
        return library::level::all;
    }
    return library::level::off;
}

/// The logger itself keeps quiet about a file that cannot be written; whoever sets it up wants to know.
/// Throws the Error of files::append.
void requireWritable(clsLogger& logger) {
    if (logger.getLevel() > library::level::off) {
        files::append(logger.getFilename(), "");
    }
}

XmlNode nodeAt(const XmlNode& root, std::string_view path) {
    const XmlNode node = root.selectSingleNode(path);
    if (!node) {
        throw Error(errc::objectNotSet, "clsTramadorValidador",
                    "Falta no catálogo o elemento '" + std::string(path) + "'");
    }
    return node;
}

std::string textAt(const XmlNode& root, std::string_view path) {
    return nodeAt(root, path).text();
}

XmlDocument readDocument(const std::string& fullName) {
    XmlDocument document;
    document.load(fullName);
    return document;
}

std::shared_ptr<clsTabela> readTable(const XmlNode& element) {
    auto tabela = std::make_shared<clsTabela>();
    tabela->key = element.getNamedItem("id");
    for (const XmlNode& child : element.childElements()) {
        if (child.name() != "ENTRADA") {
            continue;
        }
        clsEntradaTabela entrada;
        entrada.key = child.getNamedItem("valor");
        entrada.valor = child.getNamedItem("descricao");
        const std::string key = entrada.key;
        tabela->linha.Add(std::move(entrada), key);
    }
    return tabela;
}

} // namespace

clsTramadorValidador::clsTramadorValidador()
    : tabelas_(std::make_shared<Tabelas>()) {}

clsTramadorValidador::~clsTramadorValidador() {
    if (logger_ != nullptr) {
        logger_->destroy();
    }
}

bool clsTramadorValidador::load(const std::string& path, std::string_view filename) {
    setPath(path);
    const std::string fullName = files::toText(files::findNoCase(path, filename));
    // Each step has a document of its own, which is read beside the step before it.
    const auto readBeside = [&fullName] { return std::async(std::launch::async, readDocument, fullName); };
    std::future<XmlDocument> tabelas = readBeside();
    if (!loadCabecalho(readDocument(fullName))) {
        return false;
    }
    std::future<XmlDocument> boletos = readBeside();
    return loadTabelas(tabelas.get()) && loadBoletos(boletos.get());
}

bool clsTramadorValidador::isRead(const XmlDocument& document) {
    reason_ = document.empty() ? document.parseError() : std::string();
    return !document.empty();
}

bool clsTramadorValidador::loadCabecalho(const XmlDocument& document) {
    if (!isRead(document)) {
        return false;
    }
    const XmlNode root = document.documentElement();
    setTitulo(textAt(root, "app/titulo"));
    setVersao(textAt(root, "app/versao"));
    setSite(textAt(root, "app/site/caption"));
    setSiteLink(textAt(root, "app/site/link"));
    setEmail(textAt(root, "app/email/caption"));
    setEmailLink(textAt(root, "app/email/link"));
    setDescricao(textAt(root, "app/descricao"));
    const XmlNode logger = nodeAt(root, "logger");
    setLogger(logger.getNamedItem("type"), logger.getNamedItem("level"));
    return true;
}

bool clsTramadorValidador::loadTabelas(const XmlDocument& document) {
    if (!isRead(document)) {
        return false;
    }
    for (const XmlNode& element : document.selectNodes("//configuracao/TABELAS/TABELA")) {
        const std::shared_ptr<clsTabela> tabela = readTable(element);
        tabelas_->Add(tabela, tabela->key);
    }
    return true;
}

bool clsTramadorValidador::loadBoletos(const XmlDocument& document) {
    if (!isRead(document)) {
        return false;
    }
    for (const XmlNode& element : document.selectNodes("//BOLETO")) {
        const auto boleto = std::make_shared<clsBoleto>();
        boleto->setEstrutura(element, tabelas_, getPath());
        boletos_.Add(boleto, boleto->getTag());
    }
    return true;
}

std::shared_ptr<clsLogger> clsTramadorValidador::newLogger(const std::string& folder) const {
    auto logger = std::make_shared<clsLogger>();
    logger->appTitle(getTitulo());
    logger->appVersion(getVersao());
    logger->setPath(folder);
    return logger;
}

void clsTramadorValidador::setLogger(std::string_view type, std::string_view level) {
    try {
        logger_ = newLogger(getPath());
        logger_->loggerFactory(loggerType(type), loggerLevel(level));
        requireWritable(*logger_);
        oLogger = logger_;
    } catch (const std::exception& failure) {
        logger_ = newLogger(files::toText(aplicacao::pasta()));
        logger_->loggerFactory(clsLogger::typeTXT, library::level::all);
        oLogger = logger_;
        const Routine routine("clsTramadorValidador.setLogger");
        logFailure(failure);
    }
}

} // namespace tv
