#include "platform/Workbook.h"

#include "platform/BiffReader.h"
#include "platform/BiffStrings.h"
#include "platform/BiffWriter.h"
#include "platform/CompoundFile.h"
#include "platform/Files.h"
#include "platform/WorkbookSheets.h"
#include "platform/WorkbookStatement.h"
#include "platform/text.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace fs = std::filesystem;

namespace tv {
namespace {

using workbook::Sheet;
using workbook::Sheets;

constexpr const char* source = "Workbook";

[[noreturn]] void fail(std::int32_t number, std::string description) {
    throw Error(number, source, std::move(description));
}

/// A file that is too large to be a workbook is not even read.
Sheets load(const fs::path& path) {
    constexpr std::uintmax_t largest = 512U << 20U;
    try {
        if (files::stamp(path).size > largest) {
            fail(errc::workbookFailure, "o arquivo é grande demais");
        }
        return biff::read(compound::unpack(files::readAll(path)));
    } catch (const Error& error) {
        if (error.number() != errc::workbookFailure) {
            throw;
        }
        fail(errc::workbookFailure,
             "Não foi possível ler a planilha " + files::toText(path) + ": " + error.description());
    }
}

/// Finds out now whether the file can be made later, and leaves nothing behind.
void tryToCreate(const fs::path& path) {
    std::error_code ignored;
    if (!fs::is_symlink(path, ignored)) {
        files::create(path, "");
        files::remove(path);
    }
}

void checkTableName(std::string_view name) {
    const bool length = biff::charactersOf(name, biff::anyLength).count() <= workbook::maxNameLength;
    const bool signs = name.find_first_of("[]:*?/\\") == std::string_view::npos && !name.starts_with('\'') &&
                       !name.ends_with('\'');
    if (!length || !signs) {
        fail(errc::workbookFailure, "Nome inválido para uma planilha: " + std::string(name));
    }
}

} // namespace

struct Workbook::Impl {
    fs::path path;
    Sheets sheets;
    bool open = true;
    bool changed = false;
    // The list of names of the statement before, whose places are those of the next one most of the time.
    const Sheet* lastSheet = nullptr;
    std::vector<std::string> lastNames;
    std::vector<std::size_t> lastPlaces;

    Sheet* find(std::string_view table) const;
    Sheet& sheet(std::string_view table) const;
    void create(const workbook::CreateTable& statement);
    void insert(const workbook::InsertInto& statement);
    const std::vector<std::size_t>& placesOf(const Sheet& sheet, const std::vector<workbook::Name>& names);
    void close();
};

/// A "$" behind the name says that it is a sheet's; nothing else is a table here.
Sheet* Workbook::Impl::find(std::string_view table) const {
    const std::unique_ptr<Sheet>* found = sheets.list.find(table);
    if (found == nullptr && table.ends_with('$')) {
        found = sheets.list.find(table.substr(0, table.size() - 1));
    }
    return found == nullptr ? nullptr : found->get();
}

Sheet& Workbook::Impl::sheet(std::string_view table) const {
    Sheet* found = find(table);
    if (found == nullptr) {
        fail(errc::unknownTable, "A planilha não existe: " + std::string(table));
    }
    return *found;
}

void Workbook::Impl::create(const workbook::CreateTable& statement) {
    checkTableName(statement.table);
    if (sheets.list.find(statement.table) != nullptr) {
        fail(errc::tableExists, "A planilha já existe: " + std::string(statement.table));
    }
    if (statement.columns.size() > workbook::maxColumns) {
        fail(errc::workbookFailure, "A planilha teria mais de 256 colunas: " + std::string(statement.table));
    }
    auto sheet = std::make_unique<Sheet>();
    sheet->name = statement.table;
    for (const workbook::Name column : statement.columns) {
        if (sheet->columns.find(column) != nullptr) {
            fail(errc::badStatement, "O campo aparece mais de uma vez: " + std::string(column));
        }
        if (text::length(column) > workbook::maxTextLength) {
            fail(errc::textTooLong, "O nome do campo tem mais de 255 caracteres: " + std::string(column));
        }
        sheet->columns.Add(std::string(column), column);
    }
    sheets.list.Add(std::move(sheet), statement.table);
    changed = true;
}

const std::vector<std::size_t>& Workbook::Impl::placesOf(const Sheet& sheet,
                                                         const std::vector<workbook::Name>& names) {
    if (lastSheet == &sheet && std::equal(names.begin(), names.end(), lastNames.begin(), lastNames.end())) {
        return lastPlaces;
    }
    lastSheet = nullptr;
    lastPlaces.clear();
    std::vector<bool> used(sheet.columns.Count());
    for (const workbook::Name name : names) {
        const std::string* column = sheet.columns.find(name);
        if (column == nullptr) {
            fail(errc::unknownColumn, "A planilha " + sheet.name + " não tem o campo: " + std::string(name));
        }
        const auto place = static_cast<std::size_t>(column - &*sheet.columns.begin());
        if (used[place]) {
            fail(errc::badStatement, "O campo aparece mais de uma vez: " + std::string(name));
        }
        used[place] = true;
        lastPlaces.push_back(place);
    }
    lastNames.assign(names.begin(), names.end());
    lastSheet = &sheet;
    return lastPlaces;
}

void Workbook::Impl::insert(const workbook::InsertInto& statement) {
    Sheet& target = sheet(statement.table);
    const std::vector<std::size_t>& places = placesOf(target, statement.columns);
    for (std::size_t i = 0; i < places.size(); ++i) {
        if (text::length(statement.values[i]) > workbook::maxTextLength) {
            fail(errc::textTooLong,
                 "O valor do campo " + std::string(statement.columns[i]) + " tem mais de 255 caracteres");
        }
    }
    if (target.rowCount() + 1 >= workbook::maxRows) {
        fail(errc::workbookFailure, "A planilha " + target.name + " já tem 65.536 linhas");
    }
    const std::size_t row = target.cells.size();
    target.cells.resize(row + target.columns.Count(), workbook::noText);
    for (std::size_t i = 0; i < places.size(); ++i) {
        target.cells[row + places[i]] = sheets.texts.add(statement.values[i]);
    }
    changed = true;
}

void Workbook::Impl::close() {
    if (!std::exchange(open, false) || !changed) {
        return;
    }
    std::string stream = biff::write(sheets);
    sheets = {}; // what comes now takes as much room again
    files::replaceWhole(path, compound::pack(std::move(stream)));
}

Workbook::Workbook(fs::path path)
    : impl_(std::make_unique<Impl>()) {
    if (files::exists(path)) {
        impl_->sheets = load(path);
    } else {
        tryToCreate(path);
        impl_->changed = true;
    }
    impl_->path = std::move(path);
}

Workbook::Workbook(Workbook&&) noexcept = default;

Workbook& Workbook::operator=(Workbook&& other) noexcept {
    if (this != &other) {
        Workbook before(std::move(*this)); // writes what it has not written yet
        impl_ = std::move(other.impl_);
    }
    return *this;
}

Workbook::~Workbook() {
    if (impl_) {
        try {
            impl_->close();
        } catch (...) { // NOLINT(bugprone-empty-catch): who wants to know calls close
        }
    }
}

void Workbook::execute(std::string_view statement) {
    if (!impl_->open) {
        fail(errc::workbookFailure, "A planilha está fechada: " + files::toText(impl_->path));
    }
    const workbook::Statement parsed = workbook::parse(statement);
    if (const auto* create = std::get_if<workbook::CreateTable>(&parsed)) {
        impl_->create(*create);
    } else if (const auto* insert = std::get_if<workbook::InsertInto>(&parsed)) {
        impl_->insert(*insert);
    } else {
        fail(errc::badStatement,
             "O comando não altera a planilha: " + std::string(text::left(statement, 40)));
    }
}

WorkbookTable Workbook::select(std::string_view statement) const {
    if (!impl_->open) {
        fail(errc::workbookFailure, "A planilha está fechada: " + files::toText(impl_->path));
    }
    const workbook::Statement parsed = workbook::parse(statement);
    const auto* wanted = std::get_if<workbook::SelectAll>(&parsed);
    if (wanted == nullptr) {
        fail(errc::badStatement, "O comando não é uma consulta: " + std::string(text::left(statement, 40)));
    }
    const Sheet& sheet = impl_->sheet(wanted->table);
    WorkbookTable table;
    table.columns.assign(sheet.columns.begin(), sheet.columns.end());
    table.rows.resize(sheet.rowCount());
    auto cell = sheet.cells.begin();
    for (auto& row : table.rows) {
        row.resize(table.columns.size());
        for (auto& value : row) {
            if (const workbook::TextId id = *cell++; id != workbook::noText) {
                value.emplace(impl_->sheets.texts[id]);
            }
        }
    }
    return table;
}

std::string Workbook::connectionString() const {
    return "Data Source=" + files::toText(impl_->path) + ";Extended Properties=Excel 8.0";
}

void Workbook::close() {
    impl_->close();
}

} // namespace tv
