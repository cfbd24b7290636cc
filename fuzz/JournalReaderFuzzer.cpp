// Whatever a journal became: it is read without a crash, what is cut off gives nothing that the longer one
// does not give on its way, and a record that was written is read again.

#include "Documents/JournalFormat.hpp"
#include "Documents/JournalReader.hpp"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <string>
#include <string_view>

namespace {

using corvanta::JournalFormat;
using corvanta::JournalReader;

void require(bool holds) {
    if (!holds)
        std::abort();
}

/// The bytes as the contents of sound records, the first byte of each telling its length.
std::string soundJournal(std::string_view bytes, std::string_view baseText) {
    std::uint64_t seed = JournalFormat::firstSeed();
    std::string journal(JournalFormat::signature);
    corvanta::JournalHead head;
    head.baseText = corvanta::Fingerprint::of(baseText);
    journal += JournalFormat::record(JournalFormat::content(head), seed);
    while (bytes.size() > 1) {
        const std::size_t length = 1 + static_cast<unsigned char>(bytes.front()) % 64;
        journal += JournalFormat::record(bytes.substr(1, length), seed);
        bytes.remove_prefix(std::min(bytes.size(), 1 + length));
    }
    return journal;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size) {
    const std::string_view bytes(reinterpret_cast<const char*>(data), size);
    const std::string_view baseText = "<p>Anfang</p>";

    JournalReader::head(bytes);
    JournalReader::replay(bytes, baseText);
    JournalReader::replay(bytes, std::nullopt);

    const std::string journal = soundJournal(bytes, baseText);
    require(JournalReader::head(journal).has_value());
    const auto replay = JournalReader::replay(journal, baseText);
    require(replay.text.has_value());
    require(replay.end != JournalReader::End::cutOff);
    if (!bytes.empty()) {
        std::string damaged = journal;
        damaged[data[0] * std::size_t{7} % damaged.size()] ^= 1;
        const auto found = JournalReader::replay(damaged, baseText);
        require(found.end != JournalReader::End::whole);
    }
    return 0;
}
