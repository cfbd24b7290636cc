#include "Snippets/SnippetStore.hpp"

#include <algorithm>
#include <utility>

namespace corvanta {

void SnippetStore::add(Snippet snippet) {
    snippets_.push_back(std::move(snippet));
    changed_.emit(snippets_);
}

void SnippetStore::remove(const Snippet& snippet) {
    const auto found = std::ranges::find(snippets_, snippet.id, &Snippet::id);
    if (found == snippets_.end())
        return;
    snippets_.erase(found);
    changed_.emit(snippets_);
}

} // namespace corvanta
