#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"

#include "InMemoryKeychain.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace corvanta {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class ClaudeAssistantViewModelTest : public testing::Test {
protected:
    const std::string service = "org.example.App.ClaudeAPIKey";
    InMemoryKeychain keychain;
    KeychainManager manager{keychain, "org.example.App"};
};

TEST_F(ClaudeAssistantViewModelTest, HasNoKeyWithoutAnItem) {
    ClaudeAssistantViewModel assistant(manager);
    int changes = 0;
    const Subscription subscription = assistant.apiKey.subscribe([&](const auto&) { ++changes; });
    keychain.answerAll();
    EXPECT_EQ(*assistant.apiKey, "");
    EXPECT_FALSE(*assistant.isEnabled);
    EXPECT_EQ(changes, 0);
}

TEST_F(ClaudeAssistantViewModelTest, PublishesTheStoredKeyWhenTheKeychainAnswers) {
    keychain.items.emplace(service, "sk");
    ClaudeAssistantViewModel assistant(manager);
    EXPECT_FALSE(*assistant.isEnabled);
    std::vector<std::string> seen;
    const Subscription key =
        assistant.apiKey.subscribe([&](const std::string& value) { seen.push_back(value); });
    const Subscription enabled =
        assistant.isEnabled.subscribe([&](bool value) { seen.emplace_back(value ? "on" : "off"); });
    keychain.answerAll();
    EXPECT_THAT(seen, ElementsAre("sk", "on"));
}

TEST_F(ClaudeAssistantViewModelTest, StaysDisabledWithAnEmptyItem) {
    keychain.items.emplace(service, "");
    const ClaudeAssistantViewModel assistant(manager);
    keychain.answerAll();
    EXPECT_FALSE(*assistant.isEnabled);
}

TEST_F(ClaudeAssistantViewModelTest, PublishesAndStoresASavedKey) {
    ClaudeAssistantViewModel assistant(manager);
    assistant.saveAPIKey("sk");
    EXPECT_EQ(*assistant.apiKey, "sk");
    EXPECT_TRUE(*assistant.isEnabled);
    keychain.answerAll();
    EXPECT_THAT(keychain.items, ElementsAre(Pair(service, "sk")));
}

TEST_F(ClaudeAssistantViewModelTest, StoresAnEmptyKeyAndStaysDisabled) {
    ClaudeAssistantViewModel assistant(manager);
    assistant.saveAPIKey("");
    keychain.answerAll();
    EXPECT_FALSE(*assistant.isEnabled);
    EXPECT_THAT(keychain.items, ElementsAre(Pair(service, "")));
}

TEST_F(ClaudeAssistantViewModelTest, HasNoKeyAfterClearingNorAtTheNextLaunch) {
    keychain.items.emplace(service, "sk");
    ClaudeAssistantViewModel assistant(manager);
    keychain.answerAll();
    assistant.clearAPIKey();
    EXPECT_EQ(*assistant.apiKey, "");
    EXPECT_FALSE(*assistant.isEnabled);
    keychain.answerAll();
    EXPECT_THAT(keychain.items, IsEmpty());
    const ClaudeAssistantViewModel relaunched(manager);
    keychain.answerAll();
    EXPECT_FALSE(*relaunched.isEnabled);
}

TEST_F(ClaudeAssistantViewModelTest, KeepsASavedKeyForTheRunWhenTheKeychainRefuses) {
    for (const auto refusal : {Keychain::Status::noService, Keychain::Status::locked}) {
        keychain.refusal = refusal;
        ClaudeAssistantViewModel assistant(manager);
        assistant.saveAPIKey("sk");
        keychain.answerAll();
        EXPECT_EQ(*assistant.apiKey, "sk");
        EXPECT_TRUE(*assistant.isEnabled);
    }
}

TEST_F(ClaudeAssistantViewModelTest, PrefersWhatTheUserEntersToALateAnswer) {
    keychain.items.emplace(service, "old");
    ClaudeAssistantViewModel assistant(manager);
    assistant.saveAPIKey("new");
    keychain.answerAll();
    EXPECT_EQ(*assistant.apiKey, "new");
    EXPECT_THAT(keychain.items, ElementsAre(Pair(service, "new")));
}

TEST_F(ClaudeAssistantViewModelTest, StaysClearedWhenTheAnswerComesLate) {
    keychain.items.emplace(service, "old");
    ClaudeAssistantViewModel assistant(manager);
    assistant.clearAPIKey();
    keychain.answerAll();
    EXPECT_EQ(*assistant.apiKey, "");
    EXPECT_FALSE(*assistant.isEnabled);
}

TEST_F(ClaudeAssistantViewModelTest, MayBeGoneWhenTheKeychainAnswers) {
    keychain.items.emplace(service, "sk");
    { const ClaudeAssistantViewModel assistant(manager); }
    keychain.answerAll();
}

} // namespace
} // namespace corvanta
