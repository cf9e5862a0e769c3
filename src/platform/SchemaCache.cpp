#include "platform/SchemaCache.h"

#include "platform/Error.h"
#include "platform/SchemaImpl.h"
#include "platform/XercesSupport.h"

#include <xercesc/framework/MemBufInputSource.hpp>
#include <xercesc/framework/XMLGrammarPoolImpl.hpp>
#include <xercesc/parsers/SAX2XMLReaderImpl.hpp>
#include <xercesc/sax2/DefaultHandler.hpp>
#include <xercesc/util/XMLEntityResolver.hpp>
#include <xercesc/util/XMLResourceIdentifier.hpp>
#include <xercesc/util/XMLString.hpp>
#include <xercesc/util/XMLUni.hpp>

#include <algorithm>
#include <map>
#include <mutex>
#include <thread>

namespace tv {

using namespace xercesc; // NOLINT(google-build-using-namespace)

Schema::Schema()
    : impl_(std::make_unique<Impl>()) {}

Schema::~Schema() = default;

namespace {

// Compiles a schema file: collects what is wrong with it, and lets it include only files of its own folder.
class SchemaLoader : public SAX2XMLReaderImpl, public XMLEntityResolver {
public:
    SchemaLoader(XMLGrammarPool& pool, std::filesystem::path file)
        : SAX2XMLReaderImpl(XMLPlatformUtils::fgMemoryManager, &pool)
        , file_(std::move(file)) {
        setFeature(XMLUni::fgSAX2CoreNameSpaces, true);
        setFeature(XMLUni::fgXercesSchema, true);
        setFeature(XMLUni::fgXercesSchemaFullChecking, true);
        setFeature(XMLUni::fgXercesDisableDefaultEntityResolution, true);
        setFeature(XMLUni::fgXercesLoadExternalDTD, false);
        setXMLEntityResolver(this);
        setErrorHandler(&unused_); // without one the reader tells nobody of its errors
        files_.push_back(file_);
    }

    /// Throws Error when the file is no valid schema.
    void load() {
        xerces::FileSource source(file_);
        XmlFault fault;
        if (!source.open(fault)) {
            const bool missing = fault.code == xmlcode::fileNotFound;
            throw Error(missing ? errc::fileNotFound : errc::permissionDenied, "SchemaCache", fault.message);
        }
        try {
            const Grammar* grammar = loadGrammar(source, Grammar::SchemaGrammarType, true);
            if (grammar == nullptr && fault_.empty()) {
                fault_ = "o arquivo não é um esquema.";
            }
        } catch (const XMLException& failure) {
            fault_ = xerces::toUtf8(failure.getMessage());
        }
        if (!fault_.empty()) {
            throw Error(SchemaCache::schemaNotLoaded, "SchemaCache",
                        "O esquema '" + files::toText(file_) + "' não pôde ser lido: " + fault_);
        }
    }

    const std::vector<std::filesystem::path>& files() const { return files_; }

    void error(const unsigned int number, const XMLCh* const domain, const ErrTypes type,
               const XMLCh* const text, const XMLCh* const /*systemId*/, const XMLCh* const /*publicId*/,
               const XMLFileLoc line, const XMLFileLoc column) override {
        if (type != ErrType_Warning && fault_.empty()) {
            fault_ = xerces::faultMessage(number, domain, text) + " (linha " + std::to_string(line) +
                     ", coluna " + std::to_string(column) + ")";
        }
    }

    // The base class has a second member of this name for its own use.
    using SAX2XMLReaderImpl::resolveEntity;
    InputSource* resolveEntity(XMLResourceIdentifier* resource) override {
        const std::string name = xerces::toUtf8(resource->getSystemId());
        const std::filesystem::path included = file_.parent_path() / std::filesystem::path(name).filename();
        const bool inFolder = name.find("//") == std::string::npos && name.find("..") == std::string::npos;
        auto source = std::make_unique<xerces::FileSource>(included);
        XmlFault fault;
        if (!inFolder || !source->open(fault)) {
            if (fault_.empty()) {
                fault_ = "o arquivo incluído '" + name + "' não pode ser lido.";
            }
            static const XMLByte nothing = 0;
            return new MemBufInputSource(&nothing, 0, "");
        }
        if (std::find(files_.begin(), files_.end(), included) == files_.end()) {
            files_.push_back(included);
        }
        return source.release();
    }

private:
    std::filesystem::path file_;
    std::vector<std::filesystem::path> files_;
    std::string fault_;
    DefaultHandler unused_;
};

// Compiled schemas by file. What a schema makes on first use is not shared, so each thread keeps its own.
std::map<std::filesystem::path, std::shared_ptr<const Schema>>& store() {
    static thread_local std::map<std::filesystem::path, std::shared_ptr<const Schema>> schemas;
    return schemas;
}

bool isUnchanged(const Schema& schema) {
    const auto& made = schema.impl().files;
    return std::all_of(made.begin(), made.end(), [](const auto& entry) {
        try {
            return files::stamp(entry.first) == entry.second;
        } catch (const Error&) {
            return false;
        }
    });
}

} // namespace

std::shared_ptr<const Schema> SchemaCache::get(const std::filesystem::path& file) {
    const auto known = store().find(file);
    if (known != store().end() && isUnchanged(*known->second)) {
        return known->second;
    }
    xerces::start();
    std::shared_ptr<Schema> schema(new Schema); // the constructor is private
    Schema::Impl& impl = *schema->impl_;
    impl.pool = std::make_unique<XMLGrammarPoolImpl>(XMLPlatformUtils::fgMemoryManager);
    {
        SchemaLoader loader(*impl.pool, file);
        loader.load();
        for (const std::filesystem::path& part : loader.files()) {
            impl.files.emplace_back(part, files::stamp(part));
        }
    }
    impl.pool->lockPool();
    store()[file] = schema;
    return schema;
}

void SchemaCache::clear() {
    store().clear();
}

} // namespace tv
