#include "platform/XmlReader.h"

#include "platform/EntityGuard.h"
#include "platform/SchemaChecker.h"
#include "platform/SchemaImpl.h"
#include "platform/Utf8Fault.h"
#include "platform/XercesSupport.h"

#include <xercesc/framework/XMLDocumentHandler.hpp>
#include <xercesc/framework/XMLErrorCodes.hpp>
#include <xercesc/framework/XMLErrorReporter.hpp>
#include <xercesc/framework/XMLValidityCodes.hpp>
#include <xercesc/internal/XMLScanner.hpp>
#include <xercesc/internal/XMLScannerResolver.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>
#include <xercesc/validators/common/GrammarResolver.hpp>
#include <xercesc/validators/schema/SchemaSymbols.hpp>

#include <algorithm>
#include <array>
#include <utility>
#include <vector>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

namespace {

/// Elements may be nested so deep; the library's cost grows with the square of the depth.
constexpr std::size_t maxDepth = 1000;
struct TooDeep {};

bool isWhiteSpace(XMLCh c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

std::int32_t validityCode(unsigned int number) {
    return static_cast<std::int32_t>(0xC00CE000U | number);
}

} // namespace

// One parse: turns the scanner's events and errors into those of XmlHandler, with places as people count
// them.
//
// The scanner tells where it stands only when an event is over. The place of the "<" of a tag is therefore
// the place at which the event before it ended: between two events there is no text that made no event.
struct XmlReader::Impl : XMLDocumentHandler, XMLErrorReporter, SchemaFaults, XmlLocator {
    explicit Impl(std::shared_ptr<const Schema> schemaToUse)
        : schema(std::move(schemaToUse))
        , resolver(schema->impl().pool.get())
        , checker(std::make_unique<SchemaChecker>(schema->impl(), *this))
        , scanner(XMLScannerResolver::getDefaultScanner(nullptr, &resolver)) {
        scanner->setURIStringPool(resolver.getStringPool());
        scanner->setDocHandler(this);
        scanner->setErrorReporter(this);
        scanner->setEntityHandler(&guard);
        guard.onDocTypeEnd([this](bool isBracketDue) { docTypeEnds(isBracketDue); });
        guard.onOutside([this](const std::string& name) { textIsOutside(name); });
        scanner->setDocTypeHandler(&guard);
        scanner->setSecurityManager(&guard.limits());
        scanner->setDoNamespaces(true);
        scanner->setDoSchema(true);
        scanner->setValidationScheme(XMLScanner::Val_Always);
        scanner->setExitOnFirstFatal(true);
        scanner->setLoadExternalDTD(false);
        scanner->setLoadSchema(false);
        scanner->setSkipDTDValidation(true);
        scanner->setDisableDefaultEntityResolution(true);
        scanner->setNormalizeData(false);
        scanner->setIdentityConstraintChecking(true);
        scanner->cacheGrammarFromParse(false);
        scanner->useCachedGrammarInParse(true);
        scanner->setValidator(checker.get());
    }

    void parse(const std::filesystem::path& path, XmlHandler& to) {
        handler = &to;
        file = path;
        checker->setReading(false);
        handler->documentLocator(*this);
        xerces::FileSource source(file);
        XmlFault fault;
        if (!source.open(fault)) {
            handler->fatalError(fault);
            return;
        }
        try {
            scanner->scanDocument(source);
        } catch (const EntityGuard::TooLarge& doctype) {
            tellFatal(doctype.why, eventEnd);
        } catch (const TooDeep&) {
            tellFatal("Os elementos do arquivo têm níveis demais.", tagStart);
        } catch (const xerces::ReadFailure& failure) {
            tellUnread(failure.reason);
        } catch (const XMLException& failure) {
            tellFatal(xerces::toUtf8(failure.getMessage()), here());
        }
    }

    // --- places

    XmlPosition here() const {
        const ReaderMgr& readers = *scanner->getReaderMgr();
        const XMLReader* reader = readers.getCurrentReader();
        if (reader != nullptr && readers.getCurrentEntity() == nullptr) { // the file itself, as nearly always
            return {static_cast<std::int32_t>(reader->getLineNumber()),
                    static_cast<std::int32_t>(reader->getColumnNumber())};
        }
        ReaderMgr::LastExtEntityInfo info;
        readers.getLastExtEntityInfo(info);
        return {static_cast<std::int32_t>(info.lineNumber), static_cast<std::int32_t>(info.colNumber)};
    }
    static bool same(const XmlPosition& a, const XmlPosition& b) {
        return a.line == b.line && a.column == b.column;
    }

    /// While an element ends: right behind its value.
    XmlPosition valueEnd() const {
        if (hasText) {
            return textEnd;
        }
        return inEmptyTag ? tagStart : eventEnd;
    }

    std::int32_t lineNumber() const override { return valueEnd().line; }
    std::int32_t columnNumber() const override { return valueEnd().column; }

    // --- content

    void flushText() {
        if (!pending->empty()) {
            tellText();
        }
        if (!textFaults.empty()) {
            tell(textFaults);
        }
    }

    void tellText() {
        // The two buffers take turns, so that the handler may raise faults while it reads its text.
        const std::string& told = *pending;
        pending = pending == &texts.front() ? &texts.back() : &texts.front();
        pending->clear();
        if (!isStrayText) {
            handler->characters(told);
        } else if (!isBlankText) {
            handler->characters(told);
            handler->error({validityCode(XMLValid::NoCharDataInCM),
                            "Há texto onde só são permitidos elementos.", eventEnd});
        }
    }

    void tell(std::vector<XmlFault>& later) {
        for (const XmlFault& fault : std::exchange(later, {})) {
            handler->error(fault);
        }
    }

    void docCharacters(const XMLCh* const chars, const XMLSize_t length, const bool /*cdata*/) override {
        if (pending->empty()) {
            isStrayText = checker->refusesText(openElements);
            isBlankText = true;
        }
        xerces::appendUtf8(*pending, chars, length);
        eventEnd = here();
        if (isStrayText) {
            isBlankText = isBlankText && std::all_of(chars, chars + length, isWhiteSpace);
        } else {
            textEnd = eventEnd;
            hasText = true;
        }
    }

    void ignorableWhitespace(const XMLCh* const /*chars*/, const XMLSize_t /*length*/,
                             const bool /*cdata*/) override {
        eventEnd = here();
    }

    std::string_view nameOf(const XMLElementDecl& element) {
        if (element.isDeclared()) {
            return schema->impl().nameOf(element);
        }
        undeclaredName = xerces::toUtf8(element.getBaseName());
        return undeclaredName;
    }

    void elementBegins() override {
        flushText();
        isInStartTag = true;
    }

    // Value of xsi:nil, or the empty text. It is taken from the attribute itself: the library keeps what it
    // made of it to itself, and takes no "1" for "true".
    std::string nilOf(const RefVectorOf<XMLAttr>& attributes, XMLSize_t count) {
        for (XMLSize_t i = 0; i < count; ++i) {
            const XMLAttr& attribute = *attributes.elementAt(i);
            if (XMLString::equals(attribute.getName(), SchemaSymbols::fgATT_NILL) &&
                XMLString::equals(resolver.getStringPool()->getValueForId(attribute.getURIId()),
                                  SchemaSymbols::fgURI_XSI)) {
                return xerces::toUtf8(attribute.getValue());
            }
        }
        return {};
    }

    void checkNil(const XMLElementDecl& element, const std::string& nil) {
        if ((nil == "true" || nil == "1") && !checker->elementIsNil() && nil == "1") {
            tagFaults.push_back({validityCode(XMLValid::NillNotAllowed),
                                 "O elemento '" + std::string(nameOf(element)) + "' não permite 'xsi:nil'.",
                                 eventEnd});
        }
    }

    void startElement(const XMLElementDecl& element, const unsigned int /*uri*/,
                      const XMLCh* const /*prefix*/, const RefVectorOf<XMLAttr>& attributes,
                      const XMLSize_t count, const bool /*isEmpty*/, const bool /*isRoot*/) override {
        flushText();
        isInStartTag = false;
        checker->elementStarts(element, openElements++);
        if (count > 0) {
            checkNil(element, nilOf(attributes, count));
        }
        tagStart = eventEnd;
        eventEnd = here();
        if (openElements > maxDepth) {
            throw TooDeep{};
        }
        hasText = false;
        justOpened = true;
        const std::string_view name = nameOf(element);
        openNames.push_back(element.isDeclared() ? name : std::string_view());
        handler->startElement(name);
        if (!tagFaults.empty()) {
            tell(tagFaults);
        }
    }

    void endElement(const XMLElementDecl& element, const unsigned int /*uri*/, const bool /*isRoot*/,
                    const XMLCh* const /*prefix*/) override {
        elementEnds();
        handler->endElement(openNames.back().empty() ? nameOf(element) : openNames.back());
        openNames.pop_back();
        --openElements;
        eventEnd = here();
        hasText = false;
        justOpened = false;
        inEmptyTag = false;
        ending = false;
    }

    // An empty element tag tells its start and its end at one place.
    void elementEnds() override {
        flushText();
        inEmptyTag = justOpened && !hasText && same(eventEnd, here());
        ending = true;
    }
    void elementEnded() override { ending = false; }

    void docTypeEnds(bool isBracketDue) {
        eventEnd = here();
        eventEnd.column += isBracketDue ? 1 : 0;
    }

    // The text that the document means is not there: that must not pass for a valid file.
    void textIsOutside(const std::string& name) {
        if (openElements > 0) {
            textFaults.push_back({validityCode(XMLValid::VC_EntityNotFound),
                                  "A entidade externa '" + name + "' não é lida.", here()});
        }
    }

    void docComment(const XMLCh* const /*comment*/) override { otherMarkup(); }
    void docPI(const XMLCh* const /*target*/, const XMLCh* const /*data*/) override { otherMarkup(); }
    void otherMarkup() {
        flushText();
        eventEnd = here();
    }
    void startEntityReference(const XMLEntityDecl& /*entity*/) override { eventEnd = here(); }
    void endEntityReference(const XMLEntityDecl& /*entity*/) override { eventEnd = here(); }

    void startDocument() override { handler->startDocument(); }
    void endDocument() override {
        if (!ended) {
            ended = true;
            handler->endDocument();
        }
    }
    void XMLDecl(const XMLCh* const /*version*/, const XMLCh* const /*encoding*/,
                 const XMLCh* const /*standalone*/, const XMLCh* const /*actual*/) override {
        eventEnd = here();
    }
    void resetDocument() override {
        pending->clear();
        textFaults.clear();
        tagFaults.clear();
        isInStartTag = false;
        hasText = false;
        justOpened = false;
        inEmptyTag = false;
        ending = false;
        eventEnd = {1, 1};
        ended = false;
        openElements = 0;
        openNames.clear();
        guard.reset();
        checker->setReading(true); // the library has made its choice of validator by now
    }

    // --- faults

    void tellFatal(std::string message, XmlPosition position) {
        if (!ended) {
            ended = true;
            flushText();
            tell(tagFaults);
            handler->fatalError({xmlcode::notWellFormed, std::move(message), position});
        }
    }

    // What was read so far is no document: its end would be told as a fault of the text.
    void tellUnread(const std::string& reason) {
        if (!std::exchange(ended, true)) {
            handler->fatalError({xmlcode::fileNotReadable,
                                 "Não foi possível ler o arquivo '" + files::toText(file) + "': " + reason,
                                 {}});
        }
    }

    // The library decodes far ahead of where it reads: the place of a byte that is no text must be looked up.
    XmlPosition badByte(const XmlPosition& scanned) const {
        const ReaderMgr& readers = *scanner->getReaderMgr();
        const bool isReading = readers.getCurrentReader() != nullptr;
        if (!isReading || !XMLString::equals(readers.getCurrentEncodingStr(), XMLUni::fgUTF8EncodingString)) {
            return scanned;
        }
        return firstInvalidUtf8(file).value_or(scanned);
    }

    void unexpectedElement(const XMLElementDecl& element) override {
        flushText();
        handler->error({xmlcode::elementNotAllowed,
                        "O elemento '" + std::string(nameOf(element)) + "' não é permitido aqui.", eventEnd});
    }

    void missingChildren(const std::string& message) override {
        handler->error({validityCode(XMLValid::NotEnoughElemsForCM), message, valueEnd()});
    }

    // Where a fault of the schema's check stands: behind the value at an element's end, otherwise at the tag.
    XmlPosition faultPosition(unsigned int number) {
        if (number == XMLValid::NoCharDataInCM) {
            eventEnd = here();
            return eventEnd;
        }
        return ending ? valueEnd() : eventEnd;
    }

    void error(const unsigned int number, const XMLCh* const domain, const ErrTypes type,
               const XMLCh* const text, const XMLCh* const /*systemId*/, const XMLCh* const /*publicId*/,
               const XMLFileLoc line, const XMLFileLoc column) override {
        if (ended) {
            return;
        }
        const XmlPosition scanned{static_cast<std::int32_t>(line), static_cast<std::int32_t>(column)};
        if (type == ErrType_Fatal) {
            const bool ofBytes = XMLString::equals(domain, XMLUni::fgExceptDomain);
            tellFatal(xerces::faultMessage(number, domain, text), ofBytes ? badByte(scanned) : scanned);
            return;
        }
        const bool ofSchema = !XMLString::equals(domain, XMLUni::fgXMLErrDomain);
        // What is wrong with an xsi:nil is told once more, as a value of its type; "1" and "0" are right.
        const bool ofNil = !ofSchema && number == XMLErrs::InvalidAttValue;
        if (ofNil || (ofSchema && checker->isSilent(number))) {
            return;
        }
        flushText();
        XmlFault fault{xerces::faultCode(number, domain, type), xerces::faultMessage(number, domain, text),
                       ofSchema ? faultPosition(number) : scanned};
        if (type == ErrType_Warning) {
            handler->ignorableWarning(fault);
        } else if (isInStartTag) {
            tagFaults.push_back(std::move(fault)); // they are the element's, which has not been told yet
        } else {
            handler->error(fault);
        }
    }
    void resetErrors() override {}

    std::shared_ptr<const Schema> schema;
    GrammarResolver resolver;
    EntityGuard guard;
    std::unique_ptr<SchemaChecker> checker;
    std::unique_ptr<XMLScanner> scanner;
    XmlHandler* handler = nullptr;
    std::filesystem::path file;

    std::vector<XmlFault> textFaults; // told behind the text that is being read
    std::vector<XmlFault> tagFaults;  // told behind the start tag that is being read
    std::array<std::string, 2> texts; // the run that has not been told yet, and the one that is being told
    std::string* pending = &texts.front();
    std::string undeclaredName;
    std::vector<std::string_view> openNames; ///< Of the open elements; an undeclared one's is empty.
    XmlPosition eventEnd{1, 1};              // where the last event ended
    XmlPosition textEnd;                     // where the element's last text ended
    XmlPosition tagStart;                    // "<" of the start tag told last
    std::size_t openElements = 0;
    bool isBlankText = false;  // the pending text is white space
    bool isStrayText = false;  // the pending text stands where only elements may
    bool isInStartTag = false; // a start tag is being checked
    bool hasText = false;      // text came since the last tag
    bool justOpened = false;   // the last tag was a start tag
    bool inEmptyTag = false;
    bool ending = false; // an element's content is being checked at its end
    bool ended = false;
};

XmlReader::XmlReader(std::shared_ptr<const Schema> schema) {
    xerces::start();
    impl_ = xerces::memoryGuarded([&] { return std::make_unique<Impl>(std::move(schema)); });
}

XmlReader::~XmlReader() = default;

void XmlReader::parse(const std::filesystem::path& file, XmlHandler& handler) {
    xerces::memoryGuarded([&] { impl_->parse(file, handler); });
}

} // namespace tv
