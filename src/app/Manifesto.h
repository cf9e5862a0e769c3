#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace tv {

/// Files of a distribution by their names below its folder ("XSD/tipos.xsd"), each with its checksum.
using Distribuidos = std::map<std::string, std::string>;

/// Reads a distribution's list: a line a file, checksum, two blanks, name, as checksum tools write it. Throws
/// Error 5 at a line that is none, or that names a file outside of the folder.
Distribuidos leDistribuidos(std::string_view texto);

/// What an installation has put into a user's application folder, so that the next one can tell the files
/// that the user changed from those that he left alone.
struct Manifesto {
    std::string origem; ///< Checksum of the list that was set up last; empty while a set-up is under way.
    std::map<std::string, std::set<std::string>> arquivos; ///< Checksums that each file may have from us.
    std::set<std::string> ofertas; ///< Changed files whose new one the user has not decided about.

    /// Lines that cannot be read count as not there: a file about which nothing is known is the user's.
    static Manifesto le(std::string_view texto);
    std::string texto() const;
};

} // namespace tv
