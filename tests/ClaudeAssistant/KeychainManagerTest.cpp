#include "ClaudeAssistant/KeychainManager.hpp"

#include "InMemoryKeychain.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using Status = Keychain::Status;

class KeychainManagerTest : public testing::Test {
protected:
    std::optional<KeychainError> save(const std::string& key) {
        std::optional<KeychainError> result;
        manager.save(key, [&](std::optional<KeychainError> error) { result = error; });
        keychain.answerAll();
        return result;
    }

    std::optional<std::string> load() {
        std::optional<std::string> result = "no answer";
        manager.loadAPIKey([&](std::optional<std::string> key) { result = std::move(key); });
        keychain.answerAll();
        return result;
    }

    const std::string service = "org.example.App.ClaudeAPIKey";
    InMemoryKeychain keychain;
    KeychainManager manager{keychain, "org.example.App"};
};

TEST_F(KeychainManagerTest, FindsNoKeyInAnEmptyKeychain) {
    EXPECT_EQ(load(), std::nullopt);
}

TEST_F(KeychainManagerTest, GivesBackTheSavedKey) {
    EXPECT_EQ(save("sk-ant-ä€"), std::nullopt);
    EXPECT_EQ(load(), "sk-ant-ä€");
    EXPECT_THAT(keychain.items, ElementsAre(Pair(service, "sk-ant-ä€")));
}

TEST_F(KeychainManagerTest, ReplacesEarlierItemsAndLeavesThoseOfOthers) {
    keychain.items.emplace(service, "a");
    keychain.items.emplace(service, "b");
    keychain.items.emplace("somebody.else", "c");
    save("one");
    save("two");
    EXPECT_THAT(keychain.items, ElementsAre(Pair(service, "two"), Pair("somebody.else", "c")));
}

TEST_F(KeychainManagerTest, KeepsAnEmptyKeyAsAnItem) {
    save("");
    EXPECT_EQ(load(), "");
}

TEST_F(KeychainManagerTest, FindsNoKeyInBytesThatAreNoText) {
    keychain.items.emplace(service, "sk-\xff");
    EXPECT_EQ(load(), std::nullopt);
}

TEST_F(KeychainManagerTest, RemovesTheKey) {
    save("sk");
    manager.deleteAPIKey();
    keychain.answerAll();
    EXPECT_THAT(keychain.items, IsEmpty());
    EXPECT_EQ(load(), std::nullopt);
}

TEST_F(KeychainManagerTest, TellsWhyAKeyWasNotKept) {
    for (const Status refusal : {Status::noService, Status::locked, Status::failed}) {
        keychain.refusal = refusal;
        EXPECT_EQ(save("sk"), KeychainError{static_cast<std::int32_t>(refusal)});
        EXPECT_EQ(load(), std::nullopt);
    }
}

TEST_F(KeychainManagerTest, WorksAgainAfterARefusal) {
    keychain.refusal = Status::locked;
    save("sk");
    manager.deleteAPIKey();
    keychain.answerAll();
    keychain.refusal = Status::success;
    EXPECT_EQ(save("sk"), std::nullopt);
    EXPECT_EQ(load(), "sk");
}

TEST_F(KeychainManagerTest, DoesWhatItIsAskedOneAfterTheOther) {
    std::vector<std::string> told;
    manager.save("one", [&](const auto&) { told.emplace_back("saved one"); });
    manager.loadAPIKey([&](const std::optional<std::string>& key) { told.push_back("loaded " + *key); });
    manager.deleteAPIKey();
    manager.save("two", [&](const auto&) { told.emplace_back("saved two"); });
    EXPECT_EQ(keychain.waitingCount(), 1U);
    EXPECT_THAT(told, IsEmpty());
    keychain.answerAll();
    EXPECT_THAT(told, ElementsAre("saved one", "loaded one", "saved two"));
    EXPECT_THAT(keychain.items, ElementsAre(Pair(service, "two")));
}

TEST_F(KeychainManagerTest, LeavesAKeyRemovedThatWasSavedJustBefore) {
    manager.save("sk", [](const auto&) {});
    manager.deleteAPIKey();
    keychain.answerAll();
    EXPECT_THAT(keychain.items, IsEmpty());
}

TEST(KeychainManager, CallsNobodyOnceItIsDestroyed) {
    InMemoryKeychain keychain;
    bool isCalled = false;
    {
        KeychainManager manager(keychain, "org.example.App");
        manager.loadAPIKey([&](const auto&) { isCalled = true; });
        manager.save("sk", [&](const auto&) { isCalled = true; });
    }
    keychain.answerAll();
    EXPECT_FALSE(isCalled);
}

} // namespace
} // namespace corvanta
