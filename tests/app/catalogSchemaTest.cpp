// The catalog and the schemas that it names describe the same documents.

#include "SchemaText.h"
#include "ShippedCatalog.h"

#include "platform/SchemaCache.h"
#include "platform/text.h"

#include <algorithm>
#include <cstdlib>

namespace tv::test {
namespace {

// Groups of fields that a file wraps in an element of its own and that the grids show flat behind a flag.
struct Wrapping {
    std::string tag;
    std::string section;
    std::string flag;
    std::string wrapper;
    std::vector<std::string> fields;
};

const std::vector<Wrapping>& wrappings() {
    static const auto all = [] {
        const std::vector<std::string> commitment{"dtretorno",    "puretorno",  "indexadorcomp",
                                                  "perindexcomp", "txoperacao", "classecomp"};
        std::vector<Wrapping> list;
        for (const std::string section : {"titpublico", "titprivado", "debenture"}) {
            for (const std::string tag :
                 {"arquivoposicao_3_00", "arquivoposicao_4_00", "arquivoposicao_4_01"}) {
                list.push_back({tag, section, "poscompromissada", "compromisso", commitment});
            }
            for (const std::string tag : {"arquivoposicao_4_00", "arquivoposicao_4_01"}) {
                list.push_back({tag,
                                section,
                                "tipoaluguel",
                                "aluguel",
                                {"dtvencalug", "txalug", "indexadoralug", "percalug"}});
            }
        }
        for (const std::string section : {"ativosrf", "ativosrv"}) {
            list.push_back({"movimento_2_00",
                            section,
                            "tipoaluguel",
                            "aluguel",
                            {"cnpjaluguel", "txaluguel", "dtvencaluguel"}});
        }
        list.push_back({"movimento_2_00", "ativosrf", "poscompromissada", "compromisso", commitment});
        list.push_back(
            {"movimento_2_00", "opcoesflx", "barreira", "barreira", {"tpbarreira", "limitebarreira"}});
        list.push_back({"movimento_2_00", "swap", "premio", "premio", {"lpremio", "arrependimento"}});
        return list;
    }();
    return all;
}

std::vector<const Wrapping*> wrappingsOf(const std::string& layout, const std::string& section) {
    std::vector<const Wrapping*> found;
    for (const Wrapping& one : wrappings()) {
        if (one.tag == layout && one.section == section) {
            found.push_back(&one);
        }
    }
    return found;
}

class CatalogSchema : public testing::TestWithParam<std::string> {
protected:
    const clsBoleto& layout() const { return *shippedCatalog().getBoletos().Item(GetParam()); }

    // Sections of a document with their element in the schema, by the layout's kind.
    void forEachSection(const std::function<void(const clsSecao&, const SchemaElement&)>& visit) {
        const SchemaText& schema = schemaText();
        for (const SchemaElement& block : schema.root(GetParam())) {
            const auto* wrapper = layout().getSecoes().find(block.name);
            const SectionOwner& owner = wrapper != nullptr && (*wrapper)->getCampos().empty()
                                            ? static_cast<const SectionOwner&>(**wrapper)
                                            : layout();
            const std::vector<SchemaElement> children = schema.childrenOf(block);
            ASSERT_EQ(children.size(), owner.getSecoes().Count()) << block.name;
            for (std::size_t i = 0; i < children.size(); ++i) {
                const clsSecao& section = *owner.getSecoes().Item(i + 1);
                ASSERT_EQ(children[i].name, section.getTag()) << "sections come in the catalog's order";
                visit(section, children[i]);
            }
        }
    }

    const SchemaText& schemaText() {
        if (!schema_) {
            schema_ = std::make_unique<SchemaText>(layout().getValidador());
        }
        return *schema_;
    }

private:
    std::unique_ptr<SchemaText> schema_;
};

TEST_P(CatalogSchema, IsAcceptedByOurReaderAndByTheStreamingValidator) {
    EXPECT_NO_THROW(SchemaCache::get(layout().getValidador()));
    const std::string sample =
        std::string(TV_SOURCE_DIR "/data/amostras/") + GetParam() + "/valido_pequeno.xml";
    const std::string command =
        "xmllint --noout --schema '" + layout().getValidador() + "' '" + sample + "' >/dev/null 2>&1";
    EXPECT_EQ(std::system(command.c_str()), 0)
        << command; // NOLINT(cert-env33-c): a fixed command on our own files
}

TEST_P(CatalogSchema, HoldsTheSameSections) {
    int sections = 0;
    forEachSection([&](const clsSecao&, const SchemaElement&) { ++sections; });
    EXPECT_GE(sections, 4);
}

TEST_P(CatalogSchema, HoldsTheSameFieldsInTheSameOrder) {
    forEachSection([&](const clsSecao& section, const SchemaElement& element) {
        std::vector<std::string> apart; // flags, and fields that stand inside a wrapper
        std::vector<std::string> wrappers;
        for (const Wrapping* one : wrappingsOf(GetParam(), section.getTag())) {
            apart.push_back(one->flag);
            apart.insert(apart.end(), one->fields.begin(), one->fields.end());
            wrappers.push_back(one->wrapper);
        }
        std::vector<std::string> ofCatalog;
        for (const auto& field : section.getCampos()) {
            if (std::find(apart.begin(), apart.end(), field->getTag()) == apart.end()) {
                ofCatalog.push_back(field->getTag());
            }
        }
        for (const std::string& tag : apart) {
            EXPECT_NE(section.getCampos().find(tag), nullptr) << section.getTag() << "." << tag;
        }
        std::vector<std::string> ofSchema;
        for (const SchemaElement& child : schemaText().childrenOf(element)) {
            const auto wrapper = std::find(wrappers.begin(), wrappers.end(), child.name);
            if (wrapper == wrappers.end()) {
                ofSchema.push_back(child.name);
            } else {
                wrappers.erase(wrapper);
            }
        }
        EXPECT_EQ(ofCatalog, ofSchema) << section.getTag();
        EXPECT_TRUE(wrappers.empty()) << section.getTag() << " lacks a wrapper";
    });
}

TEST_P(CatalogSchema, WrapsTheGroupsOfFieldsAtTheirPlace) {
    forEachSection([&](const clsSecao& section, const SchemaElement& element) {
        const std::vector<SchemaElement> children = schemaText().childrenOf(element);
        for (const Wrapping* one : wrappingsOf(GetParam(), section.getTag())) {
            const auto found =
                std::find_if(children.begin(), children.end(),
                             [&](const SchemaElement& child) { return child.name == one->wrapper; });
            ASSERT_NE(found, children.end()) << section.getTag() << "." << one->wrapper;
            EXPECT_TRUE(found->isOptional) << one->wrapper;
            std::vector<std::string> fields;
            for (const SchemaElement& field : schemaText().childrenOf(*found)) {
                fields.push_back(field.name);
            }
            EXPECT_EQ(fields, one->fields) << section.getTag() << "." << one->wrapper;
            if (one->wrapper == "compromisso") {
                ASSERT_NE(found + 1, children.end());
                EXPECT_EQ((found + 1)->name, "classeoperacao");
            } else {
                EXPECT_EQ(found + 1, children.end()) << one->wrapper << " stands last";
            }
        }
    });
}

// What a field's type in the schema must take and refuse, by the catalog's description of it.
void expectAgreement(const clsCampo& field, const SimpleType& type, const std::string& path) {
    const clsDado& data = field.getDado();
    EXPECT_EQ(type.takes(""), !data.IsMandatorio()) << path;
    if (field.hasTabela()) {
        std::set<std::string> codes;
        for (const auto& entry : *field.getTabela()) {
            codes.insert(entry.key);
        }
        std::set<std::string> ofSchema = type.values;
        ofSchema.erase("");
        EXPECT_EQ(ofSchema, codes) << path;
        return;
    }
    switch (data.getTipo()) {
    case 133:
        EXPECT_TRUE(type.takes("20240131")) << path;
        EXPECT_FALSE(type.takes("2024-01-31")) << path;
        EXPECT_FALSE(type.takes("20241301")) << path;
        break;
    case 5:
        EXPECT_TRUE(type.takes("1")) << path;
        EXPECT_FALSE(type.takes("1,5")) << path;
        EXPECT_FALSE(type.takes("x")) << path;
        EXPECT_FALSE(type.takes("1.")) << path;
        break;
    case 3:
        EXPECT_TRUE(type.takes("12")) << path;
        EXPECT_FALSE(type.takes("1.5")) << path;
        EXPECT_FALSE(type.takes("32768")) << path;
        break;
    case 11:
        EXPECT_TRUE(type.takes("S") && type.takes("N")) << path;
        EXPECT_FALSE(type.takes("s") || type.takes("X")) << path;
        break;
    default:
        if (type.maxLength) {
            EXPECT_EQ(std::to_string(*type.maxLength), data.getTamanho()) << path;
        }
        EXPECT_FALSE(type.takes(std::string(std::stoul(data.getTamanho()) + 1, '1'))) << path;
        if (text::upper(data.getValidacao()) == "CNPJ") {
            EXPECT_TRUE(type.takes("90000001000129")) << path;
            EXPECT_FALSE(type.takes("9000000100012")) << path;
        }
    }
}

TEST_P(CatalogSchema, GivesFieldsTypesThatAgree) {
    forEachSection([&](const clsSecao& section, const SchemaElement& element) {
        std::vector<SchemaElement> fields;
        for (const SchemaElement& child : schemaText().childrenOf(element)) {
            const std::vector<SchemaElement> inside = schemaText().childrenOf(child);
            fields.insert(fields.end(), inside.begin(), inside.end());
            if (inside.empty()) {
                fields.push_back(child);
            }
        }
        for (const SchemaElement& child : fields) {
            const std::string path = section.getTag() + "." + child.name;
            const auto* field = section.getCampos().find(child.name);
            ASSERT_NE(field, nullptr) << path;
            const SimpleType* type = schemaText().simpleType(child.type);
            ASSERT_NE(type, nullptr) << path << ": type " << child.type;
            expectAgreement(**field, *type, path);
        }
    });
}

INSTANTIATE_TEST_SUITE_P(Layouts, CatalogSchema,
                         testing::Values("arquivoposicao_4_01", "arquivoposicao_4_00", "arquivoposicao_3_00",
                                         "ArquivoPosicao_2_01", "posicao_passivo_analitico_v100",
                                         "movimento_1_00", "movimento_2_00"),
                         [](const auto& one) { return one.param; });

} // namespace
} // namespace tv::test
