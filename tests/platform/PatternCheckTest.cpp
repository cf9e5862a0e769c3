#include "platform/XmlEvents.h"

#include <gmock/gmock.h>

// Values of a type are judged alike whether they are few or many: types with many different values get an
// automaton of their patterns, where those are plain enough.

namespace tv::test {
namespace {

struct PatternCase {
    const char* name;
    const char* type; ///< What stands inside xs:simpleType.
    const char*
        prefix; ///< "#" in it is replaced by a number of three digits, which makes many values of one.
    bool isValid;
};
void PrintTo(const PatternCase& row, std::ostream* out) {
    *out << row.name;
}

class Patterns : public XmlReaderFixture, public ::testing::WithParamInterface<PatternCase> {
protected:
    static constexpr std::size_t many = 300;

    static std::string value(std::size_t number) {
        std::string text = GetParam().prefix;
        const std::size_t place = text.find('#');
        return place == std::string::npos ? text : text.replace(place, 1, std::to_string(number + 100));
    }
};

TEST_P(Patterns, TheLastOfManyValuesIsJudgedAsTheFirst) {
    useSchema("<xs:element name='r'><xs:complexType><xs:sequence><xs:element name='v' "
              "maxOccurs='unbounded'><xs:simpleType>" +
              std::string(GetParam().type) +
              "</xs:simpleType></xs:element></xs:sequence></xs:complexType></xs:element>");
    std::string document = "<r>";
    for (std::size_t i = 0; i < many; ++i) {
        document += "<v>" + value(i) + "</v>";
    }
    const std::vector<std::string> faults = faultsOf(document + "</r>");
    EXPECT_THAT(faults, ::testing::Each(::testing::StartsWith("error C00CE184 ")));
    EXPECT_EQ(faults.size(), GetParam().isValid ? 0U : many);
}

#define PATTERN(x) "<xs:restriction base='xs:string'><xs:pattern value='" x "'/></xs:restriction>"

const std::vector<PatternCase> patterns{
    {"AmountRight", PATTERN("-?[0-9]{1,15}(\\.[0-9]{1,2})?"), "-#.25", true},
    {"AmountWithThreeDecimals", PATTERN("-?[0-9]{1,15}(\\.[0-9]{1,2})?"), "#.255", false},
    {"AmountTooLong", PATTERN("-?[0-9]{1,15}(\\.[0-9]{1,2})?"), "1234567890123#", false},
    {"PointIsAPoint", PATTERN("[0-9]{3}\\.5"), "#x5", false},
    {"TheWholeText", PATTERN("[0-9]{3}"), "#4", false},
    {"TheWholeTextOfEachWay", PATTERN("[0-9]{3}|x"), "#x", false},
    {"LineEndAtTheEnd", PATTERN("[0-9]{3}"), "#\n", false},
    {"EmptyOrNot", PATTERN("([0-9]{3})?"), "#", true},
    {"LettersWithAccent", PATTERN("[a-z]+[0-9]{3}"), "\xC3\xA9#", false},
    {"AnyLetter", PATTERN("\\p{L}[0-9]{3}"), "\xC3\xA9#", true},
    {"DigitsOfAllScripts", PATTERN("\\d{3}\\d"), "#\xD9\xA3", true},
    {"AnySign", PATTERN("[0-9]{3}.x"), "#\xC3\xA9x", true},
    {"AnySignIsNoLineEnd", PATTERN("[0-9]{3}.x"), "#\nx", false},
    {"NotInASet", PATTERN("[^a]+"), "#a", false},
    {"SetWithoutAnother", PATTERN("[a-z-[aeiou]][0-9]{3}"), "e#", false},
    {"SetWithoutAnotherRight", PATTERN("[a-z-[aeiou]][0-9]{3}"), "b#", true},
    {"EitherOfTwoPatterns",
     "<xs:restriction base='xs:string'><xs:pattern value='[0-9]{3}'/><xs:pattern "
     "value='x[0-9]{3}'/></xs:restriction>",
     "x#", true},
    {"BothOfTwoLevels",
     "<xs:restriction><xs:simpleType>" PATTERN(
         "[0-9]{3,4}") "</xs:simpleType><xs:pattern value='[0-9]+0'/></xs:restriction>",
     "#5", false},
    {"PatternAndLength",
     "<xs:restriction base='xs:string'><xs:maxLength value='2'/><xs:pattern "
     "value='[0-9]+'/></xs:restriction>",
     "#", false},
    {"PatternAndList",
     "<xs:restriction base='xs:string'><xs:enumeration value='100'/><xs:pattern "
     "value='[0-9]+'/></xs:restriction>",
     "5#", false},
    {"BlanksFoldedBeforeTheMatch",
     "<xs:restriction base='xs:token'><xs:pattern value='[0-9]{3} x'/></xs:restriction>", " #  x ", true},
    {"TextOfManySigns", PATTERN("[0-9]{1,60}"), "1234567890123456789012345678901234567890#", true},
    {"TextOfManySignsWrong", PATTERN("[0-9]{1,60}"), "1234567890123456789012345678901234567890x#", false},
    {"CountsBeyondTheLibrary", PATTERN("[0-9]{3,2000}"), "#", true},
};

INSTANTIATE_TEST_SUITE_P(Table, Patterns, ::testing::ValuesIn(patterns),
                         [](const auto& row) { return std::string(row.param.name); });

} // namespace
} // namespace tv::test
