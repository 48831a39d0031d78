#include <gtest/gtest.h>

#include "support/TempFolder.h"
#include <keel/Error.h>
#include <keel/FileSlice.h>

namespace {

using namespace Keel;
using FileUtil::CFileSlice;
using FileUtil::SliceResult;

std::string EveryByte(std::size_t length)
{
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i) {
        bytes[i] = static_cast<char>(i * 7 + i / 256);
    }
    return bytes;
}

TEST(FileSlice, SlicesAddUpToTheFile)
{
    const TempFolder folder;
    for (const std::size_t length : {0U, 1U, 99U, 100U, 101U, 1000U, 20'011U}) {
        const std::string bytes = EveryByte(length);
        const std::string path = folder.Write("门禁 " + std::to_string(length) + ".csv", bytes);
        CFileSlice file;
        ASSERT_TRUE(file.Open(path, 100)) << Error::GetLastErrorJson();
        EXPECT_EQ(file.FileSize(), length);
        EXPECT_EQ(file.SliceCount(), (length + 99) / 100);

        std::string whole;
        std::string slice;
        std::uint64_t count = 0;
        while (file.ReadNext(slice) == SliceResult::Slice) {
            ++count;
            EXPECT_TRUE(slice.size() == 100 || count == file.SliceCount());
            whole += slice;
        }
        EXPECT_EQ(file.ReadNext(slice), SliceResult::End);
        EXPECT_EQ(count, file.SliceCount());
        EXPECT_TRUE(whole == bytes) << length;
    }
}

TEST(FileSlice, AnySliceCanBeReadAndTheNextFollowsIt)
{
    const TempFolder folder;
    const std::string bytes = EveryByte(1050);
    CFileSlice opened;
    ASSERT_TRUE(opened.Open(folder.Write("f", bytes), 100));
    CFileSlice file = std::move(opened);
    EXPECT_FALSE(opened.IsOpen()); // NOLINT: what a moved-from reader says is the point.

    std::string slice;
    ASSERT_TRUE(file.ReadSlice(9, slice));
    EXPECT_EQ(slice, bytes.substr(900, 100));
    ASSERT_EQ(file.ReadNext(slice), SliceResult::Slice);
    EXPECT_EQ(slice, bytes.substr(1000));
    EXPECT_EQ(file.ReadNext(slice), SliceResult::End);
    ASSERT_TRUE(file.ReadSlice(0, slice));
    EXPECT_EQ(slice, bytes.substr(0, 100));

    EXPECT_FALSE(file.ReadSlice(11, slice));
    EXPECT_EQ(Error::GetLastError().number, FileUtil::kFileBadSlice);
    EXPECT_EQ(slice, bytes.substr(0, 100));
}

TEST(FileSlice, BeyondFourGiB)
{
    const TempFolder folder;
    const std::string path = folder.Write("sparse", "");
    const std::uint64_t size = (std::uint64_t{5} << 30U) + 3;
    std::error_code error;
    std::filesystem::resize_file(std::filesystem::u8path(path), size, error);
    if (error) {
        GTEST_SKIP() << "no sparse files here: " << error.message();
    }
    {
        std::fstream stream(std::filesystem::u8path(path), std::ios::in | std::ios::out | std::ios::binary);
        stream.seekp(static_cast<std::streamoff>(size - 3));
        stream << "end";
    }
    CFileSlice file;
    ASSERT_TRUE(file.Open(path));
    EXPECT_EQ(file.FileSize(), size);
    EXPECT_EQ(file.SliceCount(), 5U * 1024U + 1U);
    std::string slice;
    ASSERT_TRUE(file.ReadSlice(file.SliceCount() - 1, slice));
    EXPECT_EQ(slice, "end");
}

TEST(FileSlice, AFileThatChangesWhileItIsRead)
{
    const TempFolder folder;
    const std::string path = folder.Write("f", EveryByte(250));
    CFileSlice file;
    ASSERT_TRUE(file.Open(path, 100));
    std::string slice;
    ASSERT_EQ(file.ReadNext(slice), SliceResult::Slice);

    std::filesystem::resize_file(std::filesystem::u8path(path), 150);
    slice = "before";
    EXPECT_EQ(file.ReadNext(slice), SliceResult::Failed);
    EXPECT_EQ(slice, "before");
    EXPECT_EQ(Error::GetLastError().category, Error::kKeelModule);
    EXPECT_EQ(Error::GetLastError().number, FileUtil::kFileShrank);
    EXPECT_NE(Error::GetLastError().text.find(path), std::string::npos);

    // Back to its size and beyond: reading goes on where it stood, and ends at the size found at first.
    folder.Write("f", EveryByte(400));
    EXPECT_EQ(file.ReadNext(slice), SliceResult::Slice);
    EXPECT_EQ(slice, EveryByte(400).substr(100, 100));
    EXPECT_EQ(file.ReadNext(slice), SliceResult::Slice);
    EXPECT_EQ(slice.size(), 50U);
    EXPECT_EQ(file.ReadNext(slice), SliceResult::End);
}

TEST(FileSlice, WhatCannotBeRead)
{
    const TempFolder folder;
    const std::string path = folder.Write("f", "x");
    const struct {
        std::string path;
        std::size_t sliceBytes;
        std::int32_t number;
    } rows[] = {
        {folder.File("missing"), 1, FileUtil::kFileOpenFailed},
        {"", 1, FileUtil::kFileOpenFailed},
        {path + std::string("\0x", 2), 1, FileUtil::kFileOpenFailed},
        {folder.Path().u8string(), 1, FileUtil::kFileNotRegular},
        {path, 0, FileUtil::kFileBadSlice},
    };
    for (const auto& row : rows) {
        CFileSlice file;
        ASSERT_TRUE(file.Open(path));
        EXPECT_FALSE(file.Open(row.path, row.sliceBytes));
        EXPECT_EQ(Error::GetLastError().number, row.number) << Error::GetLastErrorJson();
        EXPECT_FALSE(file.IsOpen());
        EXPECT_EQ(file.FileSize(), 0U);
        std::string slice = "before";
        EXPECT_EQ(file.ReadNext(slice), SliceResult::Failed);
        EXPECT_EQ(Error::GetLastError().number, FileUtil::kFileNotOpen);
        EXPECT_EQ(slice, "before");
    }
}

} // namespace
