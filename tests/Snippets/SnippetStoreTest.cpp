#include "Snippets/SnippetStore.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const Snippet table{.title = "Tabelle", .body = "<table></table>"};
const Snippet list{.title = "Liste", .body = "<ul></ul>"};

TEST(SnippetStore, StartsEmpty) {
    EXPECT_THAT(SnippetStore().snippets(), IsEmpty());
}

TEST(SnippetStore, KeepsTheOrderOfAdding) {
    SnippetStore store;
    store.add(table);
    store.add(list);
    EXPECT_THAT(store.snippets(), ElementsAre(table, list));
}

TEST(SnippetStore, KeepsTheSameSnippetTwiceAndRemovesOnlyTheFirst) {
    SnippetStore store;
    store.add(table);
    store.add(list);
    store.add(table);
    store.remove(table);
    EXPECT_THAT(store.snippets(), ElementsAre(list, table));
}

TEST(SnippetStore, RemovesByIdWhateverTheOtherFieldsAre) {
    SnippetStore store;
    store.add(table);
    store.remove(Snippet{table.id, "Umbenannt", ""});
    EXPECT_THAT(store.snippets(), IsEmpty());
}

TEST(SnippetStore, ChangesNothingWhenNoIdMatches) {
    SnippetStore store;
    store.add(table);
    store.remove(Snippet{.title = table.title, .body = table.body});
    EXPECT_THAT(store.snippets(), ElementsAre(table));
}

TEST(SnippetStore, TellsOfEveryChange) {
    SnippetStore store;
    std::vector<std::size_t> sizes;
    store.signalChanged().connect(
        [&](const SnippetStore::Snippets& snippets) { sizes.push_back(snippets.size()); });
    store.add(table);
    store.add(list);
    store.remove(table);
    store.remove(table);
    EXPECT_THAT(sizes, ElementsAre(1, 2, 1));
}

} // namespace
} // namespace corvanta
