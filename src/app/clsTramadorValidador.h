#pragma once

#include "logging/clsLogger.h"
#include "model/clsBoleto.h"
#include "model/clsTabela.h"
#include "platform/KeyedCollection.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace tv {

class XmlDocument;

/// Layouts in the catalog's order under their tags.
using Boletos = KeyedCollection<std::shared_ptr<const clsBoleto>>;

/// The catalog: application data, the logger's settings, value tables and all layouts, read once from one XML
/// file. Its end writes the log's closing banner.
class clsTramadorValidador {
public:
    clsTramadorValidador();
    ~clsTramadorValidador();
    clsTramadorValidador(const clsTramadorValidador&) = delete;
    clsTramadorValidador& operator=(const clsTramadorValidador&) = delete;

    /// Reads the file `filename` of the folder `path`, the application folder, and makes the logger. False
    /// when the file cannot be read or is not well-formed; `lastReason` tells why. Any fault in the content
    /// throws: Error 91 for a missing element or attribute, 457 for a key taken twice, 5 for a table that
    /// does not exist, 13 or 6 for a bad number.
    bool load(const std::string& path, std::string_view filename);
    /// Why `load` gave false, with the parser's words; empty when it did not.
    const std::string& lastReason() const noexcept { return reason_; }

    const Boletos& getBoletos() const noexcept { return boletos_; }
    const std::string& getDescricao() const noexcept { return descricao_; }
    /// The logger, or null before setLogger.
    const std::shared_ptr<clsLogger>& getLogger() const noexcept { return logger_; }
    /// The application folder.
    const std::string& getPath() const noexcept { return path_; }
    std::shared_ptr<const Tabelas> getTabelas() const noexcept { return tabelas_; }
    const std::string& getTitulo() const noexcept { return titulo_; }
    const std::string& getVersao() const noexcept { return versao_; }
    const std::string& getSite() const noexcept { return site_; }
    const std::string& getSiteLink() const noexcept { return siteLink_; }
    const std::string& getEmail() const noexcept { return email_; }
    const std::string& getEmailLink() const noexcept { return emailLink_; }

    void setDescricao(std::string descricao) { descricao_ = std::move(descricao); }
    /// Makes the logger, begins its run and puts it into the global `oLogger`. `type` is "TXT" or "XML",
    /// `level` one of "OFF", "INFO", "WARN", "FATAL" and "ALL", both in any case; other words mean XML and
    /// OFF. A log file that cannot be opened gives a text log at level ALL in the program's own folder
    /// instead.
    void setLogger(std::string_view type, std::string_view level);
    void setPath(std::string path) { path_ = std::move(path); }
    void setSite(std::string site) { site_ = std::move(site); }
    void setSiteLink(std::string link) { siteLink_ = std::move(link); }
    void setEmail(std::string email) { email_ = std::move(email); }
    void setEmailLink(std::string link) { emailLink_ = std::move(link); }
    void setTitulo(std::string titulo) { titulo_ = std::move(titulo); }
    void setVersao(std::string versao) { versao_ = std::move(versao); }

private:
    bool isRead(const XmlDocument& document);
    bool loadCabecalho(const XmlDocument& document);
    bool loadTabelas(const XmlDocument& document);
    bool loadBoletos(const XmlDocument& document);
    std::shared_ptr<clsLogger> newLogger(const std::string& folder) const;

    std::shared_ptr<clsLogger> logger_;
    std::string titulo_;
    std::string versao_;
    std::string descricao_;
    std::string path_;
    std::string site_;
    std::string siteLink_;
    std::string email_;
    std::string emailLink_;
    Boletos boletos_;
    std::shared_ptr<Tabelas> tabelas_;
    std::string reason_;
};

/// The one catalog of the program, or empty. Programs release it before they end, so that the log gets its
/// end.
inline std::shared_ptr<clsTramadorValidador> objTramadorValidador;

} // namespace tv
