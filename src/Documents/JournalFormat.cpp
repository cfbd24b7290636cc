#include "Documents/JournalFormat.hpp"

#include "Documents/Hash.hpp"

#include <array>
#include <utility>

namespace corvanta {

namespace {

template <typename Number>
void append(std::string& bytes, Number number) {
    for (std::size_t i = 0; i < sizeof number; ++i)
        bytes.push_back(static_cast<char>(static_cast<std::uint64_t>(number) >> (8 * i)));
}

/// Takes a number from the front of `bytes`, which are enough.
template <typename Number>
Number take(std::string_view& bytes) {
    std::uint64_t number = 0;
    for (std::size_t i = 0; i < sizeof(Number); ++i)
        number |= std::uint64_t{static_cast<std::uint8_t>(bytes[i])} << (8 * i);
    bytes.remove_prefix(sizeof(Number));
    return static_cast<Number>(number);
}

void append(std::string& bytes, const Fingerprint& fingerprint) {
    append(bytes, fingerprint.size);
    append(bytes, fingerprint.hash);
}

Fingerprint takeFingerprint(std::string_view& bytes) {
    const auto size = take<std::uint64_t>(bytes);
    return {size, take<std::uint64_t>(bytes)};
}

/// Takes the kind from the front of `content` if it is `kind` and at least `size` bytes follow.
bool takeKind(std::string_view& content, JournalFormat::Kind kind, std::size_t size) {
    if (content.size() < 1 + size || content.front() != static_cast<char>(kind))
        return false;
    content.remove_prefix(1);
    return true;
}

} // namespace

std::uint64_t JournalFormat::firstSeed() {
    return Hash::of(signature);
}

std::string JournalFormat::content(const JournalHead& head) {
    std::string content(1, static_cast<char>(Kind::head));
    append(content, version);
    append(content, static_cast<std::uint8_t>(head.file.has_value()));
    append(content, head.fileContent);
    append(content, head.baseText);
    return content + head.file.value_or("").native();
}

std::string JournalFormat::content(const Edit& edit) {
    std::string content(1, static_cast<char>(Kind::edit));
    append(content, edit.offset);
    append(content, edit.removed);
    return content.append(edit.inserted);
}

std::string JournalFormat::content(Kind kind, std::string_view text) {
    std::string content;
    content.reserve(1 + text.size());
    content.push_back(static_cast<char>(kind));
    return content.append(text);
}

std::string JournalFormat::record(std::string_view content, std::uint64_t& seed) {
    seed = Hash::of(content, seed);
    std::string record;
    record.reserve(12 + content.size());
    append(record, static_cast<std::uint32_t>(content.size()));
    append(record, seed);
    return record.append(content);
}

std::optional<std::string_view> JournalFormat::takeRecord(std::string_view& bytes, std::uint64_t& seed) {
    std::string_view rest = bytes;
    if (rest.size() < 12)
        return std::nullopt;
    const auto size = take<std::uint32_t>(rest);
    const auto checksum = take<std::uint64_t>(rest);
    if (size == 0 || size > rest.size() || Hash::of(rest.substr(0, size), seed) != checksum)
        return std::nullopt;
    seed = checksum;
    bytes = rest.substr(size);
    return rest.substr(0, size);
}

std::optional<JournalHead> JournalFormat::head(std::string_view content) {
    if (!takeKind(content, Kind::head, 2 + 4 * 8) || take<std::uint8_t>(content) != version)
        return std::nullopt;
    const bool hasFile = take<std::uint8_t>(content) != 0;
    JournalHead head;
    head.fileContent = takeFingerprint(content);
    head.baseText = takeFingerprint(content);
    if (hasFile)
        head.file = std::filesystem::path(content);
    return head;
}

std::optional<JournalFormat::Edit> JournalFormat::edit(std::string_view content) {
    if (!takeKind(content, Kind::edit, std::size_t{2} * 8))
        return std::nullopt;
    Edit edit;
    edit.offset = take<std::uint64_t>(content);
    edit.removed = take<std::uint64_t>(content);
    edit.inserted = content;
    return edit;
}

} // namespace corvanta
