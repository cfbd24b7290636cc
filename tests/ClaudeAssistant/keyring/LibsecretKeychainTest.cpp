#include "ClaudeAssistant/gtk/LibsecretKeychain.hpp"

#include "ClaudeAssistant/ClaudeAssistantViewModel.hpp"
#include "PrivateKeyring.hpp"
#include "Support/gtk/MainLoop.hpp"

#include <gtest/gtest.h>
#include <libsecret/secret.h>

#include <algorithm>
#include <chrono>
#include <fstream>
#include <iterator>
#include <utility>

namespace corvanta {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using Status = Keychain::Status;
using Found = std::pair<Status, std::optional<std::string>>;
using Clock = std::chrono::steady_clock;

class LibsecretKeychainTest : public testing::Test {
protected:
    Status add(const std::string& data, const std::string& name = "org.example.App.ClaudeAPIKey") {
        return answerOf([&](auto whenDone) { keychain.add(name, data, whenDone); });
    }

    Status remove() {
        return answerOf([&](auto whenDone) { keychain.remove(service, whenDone); });
    }

    Found find(const std::string& name = "org.example.App.ClaudeAPIKey") {
        std::optional<Found> answer;
        keychain.copyMatching(name, [&](Status status, std::optional<std::string> data) {
            answer = Found{status, std::move(data)};
        });
        EXPECT_FALSE(answer) << "answered within the call";
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); })) << "no answer";
        return answer.value_or(Found{Status::failed, std::nullopt});
    }

    template <typename Operation>
    Status answerOf(Operation operation) {
        std::optional<Status> answer;
        operation([&](Status status) { answer = status; });
        EXPECT_FALSE(answer) << "answered within the call";
        EXPECT_TRUE(waitUntil([&] { return answer.has_value(); })) << "no answer";
        return answer.value_or(Status::failed);
    }

    static Found found(const std::string& data) { return {Status::success, data}; }

    const std::string service = "org.example.App.ClaudeAPIKey";
    const Found nothing{Status::itemNotFound, std::nullopt};
    PrivateKeyring keyring;
    LibsecretKeychain keychain;
};

TEST_F(LibsecretKeychainTest, KeepsAndForgetsAnItem) {
    keyring.startUnlocked();
    EXPECT_EQ(find(), nothing);
    EXPECT_EQ(add("sk-ant-ä€"), Status::success);
    EXPECT_EQ(find(), found("sk-ant-ä€"));
    EXPECT_EQ(remove(), Status::success);
    EXPECT_EQ(find(), nothing);
    EXPECT_EQ(remove(), Status::itemNotFound);
}

TEST_F(LibsecretKeychainTest, KeepsEveryByte) {
    keyring.startUnlocked();
    for (const std::string& data : {""s, "a\0b\xff"s, std::string(10'000, 'k')}) {
        remove();
        EXPECT_EQ(add(data), Status::success);
        EXPECT_EQ(find(), found(data));
    }
}

TEST_F(LibsecretKeychainTest, LeavesTheItemsOfOtherServices) {
    keyring.startUnlocked();
    EXPECT_EQ(add("other", "org.example.Other"), Status::success);
    EXPECT_EQ(find(), nothing);
    EXPECT_EQ(remove(), Status::itemNotFound);
    EXPECT_EQ(add("mine"), Status::success);
    EXPECT_EQ(remove(), Status::success);
    EXPECT_EQ(find(), nothing);
    EXPECT_EQ(find("org.example.Other"), found("other"));
}

TEST_F(LibsecretKeychainTest, MakesAnItemWithAReadableLabelAndOneAttribute) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    GHashTable* attributes = g_hash_table_new(g_str_hash, g_str_equal);
    GList* items =
        secret_service_search_sync(nullptr, nullptr, attributes, SECRET_SEARCH_ALL, nullptr, nullptr);
    g_hash_table_unref(attributes);
    ASSERT_EQ(g_list_length(items), 1U);
    auto* item = SECRET_ITEM(items->data);
    char* label = secret_item_get_label(item);
    EXPECT_STREQ(label, "Corvanta");
    g_free(label);
    GHashTable* kept = secret_item_get_attributes(item);
    EXPECT_STREQ(static_cast<const char*>(g_hash_table_lookup(kept, "service")), service.c_str());
    g_hash_table_remove(kept, "xdg:schema");
    EXPECT_EQ(g_hash_table_size(kept), 1U) << "beside the schema, which the service adds";
    g_hash_table_unref(kept);
    g_list_free_full(items, g_object_unref);
}

TEST_F(LibsecretKeychainTest, SaysThatThereIsNoService) {
    EXPECT_EQ(find(), (Found{Status::noService, std::nullopt}));
    EXPECT_EQ(add("sk"), Status::noService);
    EXPECT_EQ(remove(), Status::noService);
}

TEST_F(LibsecretKeychainTest, FindsAServiceThatComesLater) {
    EXPECT_EQ(find().first, Status::noService);
    keyring.startUnlocked();
    EXPECT_EQ(add("sk"), Status::success);
    EXPECT_EQ(find(), found("sk"));
}

TEST_F(LibsecretKeychainTest, SurvivesAServiceThatVanishesAndFindsItsSuccessor) {
    keyring.startUnlocked();
    EXPECT_EQ(add("sk"), Status::success);
    keyring.stop();
    EXPECT_EQ(find(), (Found{Status::noService, std::nullopt}));
    EXPECT_EQ(add("new"), Status::noService);
    keyring.startUnlocked();
    EXPECT_EQ(find(), found("sk"));
    EXPECT_EQ(add("again"), Status::success);
}

TEST_F(LibsecretKeychainTest, AnswersWhenTheServiceVanishesInTheMiddle) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    std::optional<Status> answer;
    keychain.copyMatching(service, [&](Status status, const auto&) { answer = status; });
    keyring.stop();
    EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
}

TEST_F(LibsecretKeychainTest, KeepsTheItemWhenTheServiceIsStartedAgain) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    keyring.stop();
    keyring.startUnlocked();
    EXPECT_EQ(find(), found("sk"));
}

TEST_F(LibsecretKeychainTest, GivesNothingAwayWhileNobodyUnlocksTheStore) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    keyring.stop();
    keyring.startLocked();
    const Found answer = find();
    EXPECT_NE(answer.first, Status::success);
    EXPECT_EQ(answer.second, std::nullopt);
    EXPECT_NE(add("new"), Status::success);
    EXPECT_NE(remove(), Status::success);
    keyring.stop();
    keyring.startUnlocked();
    EXPECT_EQ(find(), found("sk")) << "it must still be there";
}

TEST_F(LibsecretKeychainTest, LeavesTheProgramUsableWhileTheStoreWaitsForAPassword) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    keyring.stop();
    keyring.letPasswordDialogHang();
    keyring.startLocked();

    KeychainManager manager(keychain, "org.example.App");
    const auto start = Clock::now();
    const ClaudeAssistantViewModel assistant(manager);
    bool isAnswered = false;
    manager.loadAPIKey([&](const auto&) { isAnswered = true; });
    auto last = Clock::now();
    auto longest = last - start;
    const auto end = last + 500ms;
    waitUntil([&] {
        longest = std::max(longest, Clock::now() - last);
        last = Clock::now();
        return last >= end;
    });
    EXPECT_LT(longest, 50ms);
    EXPECT_FALSE(isAnswered) << "nobody has given the password";
    EXPECT_FALSE(*assistant.isEnabled);
}

TEST_F(LibsecretKeychainTest, AnswersWhenTheServiceVanishesWhileItWaitsForAPassword) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    keyring.stop();
    keyring.letPasswordDialogHang();
    keyring.startLocked();
    std::optional<Status> answer;
    keychain.copyMatching(service, [&](Status status, const auto&) { answer = status; });
    letPass(200ms);
    ASSERT_FALSE(answer);
    keyring.stop();
    EXPECT_TRUE(waitUntil([&] { return answer.has_value(); }));
    EXPECT_EQ(answer, Status::noService);
    keyring.startUnlocked();
    EXPECT_EQ(find(), found("sk"));
}

TEST_F(LibsecretKeychainTest, StoresOneItemHoweverOftenAKeyIsSaved) {
    keyring.startUnlocked();
    KeychainManager manager(keychain, "org.example.App");
    {
        ClaudeAssistantViewModel assistant(manager);
        assistant.saveAPIKey("one");
        assistant.saveAPIKey("two");
    }
    std::optional<std::string> key;
    bool isLoaded = false;
    manager.loadAPIKey([&](std::optional<std::string> loaded) {
        key = std::move(loaded);
        isLoaded = true;
    });
    ASSERT_TRUE(waitUntil([&] { return isLoaded; }));
    EXPECT_EQ(key, "two");
    EXPECT_EQ(remove(), Status::success);
    EXPECT_EQ(find(), nothing);
}

TEST_F(LibsecretKeychainTest, PublishesTheKeyAMomentAfterTheStart) {
    keyring.startUnlocked();
    ASSERT_EQ(add("sk"), Status::success);
    KeychainManager manager(keychain, "org.example.App");
    const ClaudeAssistantViewModel assistant(manager);
    EXPECT_FALSE(*assistant.isEnabled);
    EXPECT_TRUE(waitUntil([&] { return *assistant.isEnabled; }));
    EXPECT_EQ(*assistant.apiKey, "sk");
}

TEST_F(LibsecretKeychainTest, LeavesNoTraceOfTheKeyInAnyFile) {
    const std::string key = "sk-ant-0123456789abcdef";
    keyring.startUnlocked();
    ASSERT_EQ(add(key), Status::success);
    ASSERT_EQ(find(), found(key));
    keyring.stop();
    std::size_t files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(keyring.folder())) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(file), {}};
        EXPECT_EQ(bytes.find(key), std::string::npos) << entry.path();
        ++files;
    }
    EXPECT_GT(files, 0U) << "the store itself lies there";
}

} // namespace
} // namespace corvanta
