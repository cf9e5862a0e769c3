#include "platform/WorkbookStatement.h"

#include "platform/Error.h"
#include "platform/Workbook.h"
#include "platform/text.h"

#include <algorithm>

namespace tv::workbook {
namespace {

bool isSpace(char c) noexcept {
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// A name without brackets ends at a white space or at a sign of the statement; everything else may stand in
/// it: letters of any alphabet, digits, "_", ".", "-", "$".
bool endsName(char c) noexcept {
    return isSpace(c) || std::string_view("(),;'\"[]").find(c) != std::string_view::npos;
}

/// Walks over the text of one statement.
class Parser {
public:
    explicit Parser(std::string_view text) noexcept
        : text_(text) {}

    Statement statement() {
        if (takeWord("CREATE")) {
            expectWord("TABLE");
            return finished(createTable());
        }
        if (takeWord("INSERT")) {
            expectWord("INTO");
            return finished(insertInto());
        }
        if (takeWord("SELECT")) {
            expect('*');
            expectWord("FROM");
            return finished(SelectAll{name()});
        }
        fail();
    }

private:
    [[noreturn]] void fail() const {
        constexpr std::size_t shown = 40;
        const std::string_view rest = text_.substr(std::min(at_, text_.size()));
        throw Error(errc::badStatement, "Workbook.execute",
                    rest.empty() ? "Erro de sintaxe: o comando termina antes do esperado"
                                 : "Erro de sintaxe no comando, em: " + std::string(text::left(rest, shown)));
    }

    void skipSpace() noexcept {
        while (at_ < text_.size() && isSpace(text_[at_])) {
            ++at_;
        }
    }

    /// Takes the sign if it comes next.
    bool take(char sign) noexcept {
        skipSpace();
        if (at_ >= text_.size() || text_[at_] != sign) {
            return false;
        }
        ++at_;
        return true;
    }
    void expect(char sign) {
        if (!take(sign)) {
            fail();
        }
    }

    std::string_view word() noexcept {
        skipSpace();
        const std::size_t start = at_;
        while (at_ < text_.size() && !endsName(text_[at_])) {
            ++at_;
        }
        return text_.substr(start, at_ - start);
    }
    /// Takes the word of the statement's form if it comes next; in capitals or not.
    bool takeWord(std::string_view wanted) {
        const std::size_t start = at_;
        if (text::equalsNoCase(word(), wanted)) {
            return true;
        }
        at_ = start;
        return false;
    }
    void expectWord(std::string_view wanted) {
        if (!takeWord(wanted)) {
            fail();
        }
    }

    Name name() {
        if (!take('[')) {
            const Name plain = word();
            if (plain.empty()) {
                fail();
            }
            return plain;
        }
        const std::size_t end = text_.find(']', at_);
        if (end == std::string_view::npos || end == at_) {
            fail();
        }
        const Name bracketed = text_.substr(at_, end - at_);
        at_ = end + 1;
        return bracketed;
    }

    /// Two apostrophes side by side are one of the text; one alone ends it.
    std::string literal() {
        expect('\'');
        std::string value;
        while (true) {
            const std::size_t end = text_.find('\'', at_);
            if (end == std::string_view::npos) {
                at_ = text_.size();
                fail();
            }
            value += text_.substr(at_, end - at_);
            at_ = end + 1;
            if (at_ >= text_.size() || text_[at_] != '\'') {
                return value;
            }
            value += '\'';
            ++at_;
        }
    }

    /// "( item, item )", one item at least.
    template<typename Item>
    void list(Item item) {
        expect('(');
        do {
            item();
        } while (take(','));
        expect(')');
    }

    CreateTable createTable() {
        CreateTable result{name(), {}};
        list([&] {
            result.columns.push_back(name());
            expectWord("varchar");
            expect('(');
            expectWord("255");
            expect(')');
        });
        return result;
    }

    InsertInto insertInto() {
        InsertInto result{name(), {}, {}};
        list([&] { result.columns.push_back(name()); });
        expectWord("VALUES");
        result.values.reserve(result.columns.size());
        list([&] { result.values.push_back(literal()); });
        if (result.values.size() != result.columns.size()) {
            throw Error(errc::badStatement, "Workbook.execute",
                        "O número de valores (" + std::to_string(result.values.size()) +
                            ") não é o de campos (" + std::to_string(result.columns.size()) + ")");
        }
        return result;
    }

    /// A ";" may close the statement; nothing may follow.
    Statement finished(Statement result) {
        static_cast<void>(take(';'));
        skipSpace();
        if (at_ != text_.size()) {
            fail();
        }
        return result;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

} // namespace

Statement parse(std::string_view text) {
    return Parser(text).statement();
}

} // namespace tv::workbook
