#pragma once

#include "Snippets/Snippet.hpp"

#include <sigc++/signal.h>

#include <vector>

namespace corvanta {

/// The user's snippets in the order in which they were added, kept in memory only. Used on the main thread
/// only.
class SnippetStore {
public:
    using Snippets = std::vector<Snippet>;

    SnippetStore() = default;
    SnippetStore(const SnippetStore&) = delete;
    SnippetStore& operator=(const SnippetStore&) = delete;

    const Snippets& snippets() const { return snippets_; }

    /// Appends `snippet`, also when an equal one is there already.
    void add(Snippet snippet);

    /// Removes the first snippet with the same id; the other fields are not compared.
    void remove(const Snippet& snippet);

    /// Emitted with the new list after each change.
    sigc::signal<void(const Snippets&)>& signalChanged() { return changed_; }

private:
    Snippets snippets_;
    sigc::signal<void(const Snippets&)> changed_;
};

} // namespace corvanta
