#pragma once

#include "platform/XmlReader.h"

#include <xercesc/framework/XMLErrorReporter.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include <cstdio>
#include <filesystem>
#include <memory>
#include <string>
#include <string_view>

/// What the reader and the schema cache share about the parser's library.
namespace tv::xerces {

/// Starts the library once for the life of the process.
void start();

std::string toUtf8(const XMLCh* text);
std::string toUtf8(const XMLCh* text, XMLSize_t length);
/// Appends UTF-16 as UTF-8, quick for ASCII.
void appendUtf8(std::string& out, const XMLCh* text, XMLSize_t length);
std::u16string toUtf16(std::string_view text);

/// The code that a fault carries outside: its class's own, or one made of the parser's domain and number.
std::int32_t faultCode(unsigned int number, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type);
/// The parser's message in Portuguese, or its own text where no translation is known.
std::string faultMessage(unsigned int number, const XMLCh* domain, const XMLCh* text);

/// A file as the parser's input. The stream is opened here, so that a file that cannot be read is known
/// before the parse starts.
class FileSource : public xercesc::InputSource {
public:
    explicit FileSource(const std::filesystem::path& file);

    /// Opens the file. False with a fault that tells why it cannot be read.
    bool open(XmlFault& fault);
    xercesc::BinInputStream* makeStream() const override;

private:
    struct Closer {
        void operator()(std::FILE* stream) const noexcept { static_cast<void>(std::fclose(stream)); }
    };
    std::filesystem::path file_;
    mutable std::unique_ptr<std::FILE, Closer> stream_;
};

} // namespace tv::xerces
