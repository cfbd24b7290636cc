#include "ClaudeAssistant/ClaudeSettingsModel.hpp"

#include "InMemoryKeychain.hpp"

#include <gtest/gtest.h>

namespace corvanta {
namespace {

class ClaudeSettingsModelTest : public testing::Test {
protected:
    InMemoryKeychain keychain;
    KeychainManager manager{keychain, "org.example.App"};
    ClaudeAssistantViewModel assistant{manager};
    ClaudeSettingsModel settings{assistant};
};

TEST_F(ClaudeSettingsModelTest, StartsWithAnEmptyDraft) {
    EXPECT_EQ(*settings.draftKey, "");
    EXPECT_FALSE(*settings.didSave);
    EXPECT_FALSE(settings.canSave());
    EXPECT_FALSE(settings.canRemove());
}

TEST_F(ClaudeSettingsModelTest, CannotSaveADraftOfWhiteSpace) {
    for (const char* draft : {" ", "\t\r\n\v\f", "\u00A0\u2003\u3000 \u2028"}) {
        settings.draftKey = draft;
        EXPECT_FALSE(settings.canSave());
    }
    settings.draftKey = " x ";
    EXPECT_TRUE(settings.canSave());
}

TEST_F(ClaudeSettingsModelTest, SavesTheKeyWithoutTheWhiteSpaceAroundIt) {
    settings.draftKey = "  sk-ant-1\n";
    settings.save();
    EXPECT_EQ(*assistant.apiKey, "sk-ant-1");
    EXPECT_TRUE(*assistant.isEnabled);
    EXPECT_TRUE(*settings.didSave);
    EXPECT_TRUE(settings.canRemove());
    EXPECT_EQ(*settings.draftKey, "  sk-ant-1\n") << "the field keeps what was typed";
}

TEST_F(ClaudeSettingsModelTest, KeepsTheWhiteSpaceWithinAKey) {
    settings.draftKey = "\u2003a b\u00A0c\u0085\r\n";
    settings.save();
    EXPECT_EQ(*assistant.apiKey, "a b\u00A0c");
}

TEST_F(ClaudeSettingsModelTest, RemovesTheKeyAndEmptiesTheDraft) {
    settings.draftKey = "sk";
    settings.save();
    settings.remove();
    EXPECT_EQ(*settings.draftKey, "");
    EXPECT_FALSE(*settings.didSave);
    EXPECT_FALSE(*assistant.isEnabled);
    EXPECT_FALSE(settings.canRemove());
    keychain.answerAll();
    EXPECT_TRUE(keychain.items.empty());
}

} // namespace
} // namespace corvanta
