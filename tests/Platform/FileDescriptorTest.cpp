#include "Platform/FileDescriptor.hpp"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <utility>

namespace corvanta {
namespace {

bool isOpenInTheProcess(int descriptor) {
    return ::fcntl(descriptor, F_GETFD) >= 0;
}

int openNull() {
    return ::open("/dev/null", O_RDONLY | O_CLOEXEC);
}

TEST(FileDescriptor, ClosesWhenItGoes) {
    const int raw = openNull();
    {
        const FileDescriptor file(raw);
        EXPECT_TRUE(file.isOpen());
        EXPECT_EQ(file.get(), raw);
        EXPECT_TRUE(isOpenInTheProcess(raw));
    }
    EXPECT_FALSE(isOpenInTheProcess(raw));
}

TEST(FileDescriptor, OwnsNothingAfterAFailedOpen) {
    const FileDescriptor file(-1);
    EXPECT_FALSE(file.isOpen());
}

TEST(FileDescriptor, HandsItsDescriptorOnWhenMoved) {
    const int raw = openNull();
    FileDescriptor first(raw);
    {
        const FileDescriptor second(std::move(first));
        EXPECT_EQ(second.get(), raw);
        EXPECT_TRUE(isOpenInTheProcess(raw));
    }
    EXPECT_FALSE(isOpenInTheProcess(raw));
}

} // namespace
} // namespace corvanta
