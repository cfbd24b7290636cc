#pragma once

#include <cstdint>
#include <optional>
#include <string_view>
#include <vector>

namespace corvanta {

/// The open documents as the launch logic sees them.
class LaunchDocuments {
public:
    /// Names an open document; no two documents of a run share one.
    using Document = std::uint64_t;

    LaunchDocuments() = default;
    LaunchDocuments(const LaunchDocuments&) = delete;
    LaunchDocuments& operator=(const LaunchDocuments&) = delete;
    virtual ~LaunchDocuments() = default;

    /// All open documents, in the order they were opened.
    virtual std::vector<Document> documents() const = 0;

    virtual bool hasFileLocation(Document document) const = 0;

    /// Whether the document has a window with a text view, whose whole text is `text` (UTF-8).
    virtual bool shows(Document document, std::string_view text) const = 0;

    /// Opens a new document from the template in a window, or nothing when that fails.
    virtual std::optional<Document> openUntitledDocumentAndDisplay() = 0;

    /// Closes the document without a question.
    virtual void close(Document document) = 0;
};

} // namespace corvanta
