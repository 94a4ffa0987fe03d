#pragma once

#include "Error.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace voro::renderer {

/** The owner of parameters. */
enum class Owner { Context, Input, Track, Audio, Video, Caption, File };

/** A set of named texts. */
class Parameters {
public:
    using Entries = std::map<std::string, std::string, std::less<>>;

    const Entries &entries() const { return m_entries; }
    bool isEmpty() const { return m_entries.empty(); }
    void set(std::string name, std::string value) { m_entries.insert_or_assign(std::move(name), std::move(value)); }
    /** Takes over what the others hold. */
    void merge(const Parameters &others);

    /** The value, empty when it is not set. */
    std::string text(std::string_view name) const;
    /** The value as a number; `fallback` when it is not set. Only for what was checked. */
    long number(std::string_view name, long fallback) const;

    /** Whether every one is known to the owner, with a value in its range; the failure names the first that is not. */
    Result check(Owner owner) const;

    /** One attribute line each; the names have to be valid ones. */
    std::string toText() const;
    /** Reads what toText() wrote; nothing when it is something else. */
    static std::optional<Parameters> fromText(std::string_view text);

    bool operator==(const Parameters &) const = default;

private:
    Entries m_entries;
};

} // namespace voro::renderer
