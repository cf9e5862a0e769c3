#pragma once

#include "platform/Descriptor.h"
#include "platform/XmlReader.h"

#include <xercesc/framework/XMLErrorReporter.hpp>
#include <xercesc/sax/InputSource.hpp>
#include <xercesc/util/BinInputStream.hpp>
#include <xercesc/util/OutOfMemoryException.hpp>
#include <xercesc/util/XercesDefs.hpp>

#include <filesystem>
#include <new>
#include <optional>
#include <string>
#include <string_view>

/// What the reader and the schema cache share about the parser's library.
namespace tv::xerces {

/// Starts the library once for the life of the process.
void start();

/// Does a piece of work with the library. What it throws when memory runs out is none of the language's
/// exceptions, so nobody else would catch it; here it becomes bad_alloc.
template<typename Work>
decltype(auto) memoryGuarded(Work work) {
    try {
        return work();
    } catch (const xercesc::OutOfMemoryException&) {
        throw std::bad_alloc();
    }
}

/// What reading from a `FileSource` throws where the system cannot read on: the end of the file is another
/// thing.
struct ReadFailure {
    std::string reason;
};

std::string toUtf8(const XMLCh* text);
std::string toUtf8(const XMLCh* text, XMLSize_t length);
/// Appends UTF-16 as UTF-8, quick for ASCII.
void appendUtf8(std::string& out, const XMLCh* text, XMLSize_t length);
std::u16string toUtf16(std::string_view text);

/// The code that a fault carries outside: its class's own, or one made of the parser's domain and number.
std::int32_t faultCode(unsigned int number, const XMLCh* domain, xercesc::XMLErrorReporter::ErrTypes type);
/// The parser's message in Portuguese, or its own text where no translation is known.
std::string faultMessage(unsigned int number, const XMLCh* domain, const XMLCh* text);

/// A file as the parser's input. The file is opened here, so that one that cannot be read is known before the
/// parse starts, and closed with the object, which must outlive the parse.
class FileSource : public xercesc::InputSource {
public:
    explicit FileSource(const std::filesystem::path& file);

    /// Opens the file. False with a fault that tells why it cannot be read.
    bool open(XmlFault& fault);
    xercesc::BinInputStream* makeStream() const override;

private:
    std::filesystem::path file_;
    std::optional<files::Descriptor> stream_;
    mutable bool isGiven_ = false; ///< The one stream of the file has been made.
};

} // namespace tv::xerces
