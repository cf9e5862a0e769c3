#pragma once

#include <filesystem>
#include <memory>
#include <string>

namespace tv {

/// A compiled schema with the files that it was made of.
class Schema {
public:
    ~Schema();
    Schema(const Schema&) = delete;
    Schema& operator=(const Schema&) = delete;

    struct Impl;
    const Impl& impl() const noexcept { return *impl_; }

private:
    friend class SchemaCache;
    Schema();
    std::unique_ptr<Impl> impl_;
};

/// Schemas by file, each compiled once for as long as it and the files that it includes stay the same.
/// Schemas are local files: what they include is read only from their own folder, and nothing from a network.
class SchemaCache {
public:
    /// The compiled schema of that file. Throws Error 53 when it is not there and Error -1072898028
    /// (C00CE014) with the reason when it is no valid schema.
    static std::shared_ptr<const Schema> get(const std::filesystem::path& file);
    /// Forgets every schema.
    static void clear();

    static constexpr int schemaNotLoaded = -1072898028;

private:
    static void compile(Schema::Impl& impl, const std::filesystem::path& file);
};

} // namespace tv
