// SPDX-License-Identifier: MIT
#include "exchange/ZipWriter.h"

#include "tests/support/OtherPrograms.h"
#include "tests/support/TemporaryFile.h"

#include <gtest/gtest.h>

using orvane::MemorySink;
using orvane::ZipWriter;

TEST(ZipWriter, AnEmptyFileIsWrittenByteForByte)
{
    MemorySink sink;
    ZipWriter zip(sink);
    zip.BeginFile("a");
    zip.EndFile();
    zip.Finish();
    // Fields as the format's description names them; an empty file is the two bytes 03 00 when it
    // is deflated, and its checksum is 0.
    const std::string expected(
        "PK\x03\x04"
        "\x14\0"
        "\x08\x08"
        "\x08\0"
        "\0\0"
        "\x21\0"  // version to date
        "\0\0\0\0"
        "\0\0\0\0"
        "\0\0\0\0"
        "\x01\0"
        "\0\0"
        "a"       // checksum to name
        "\x03\0"  // the file
        "PK\x07\x08"
        "\0\0\0\0"
        "\x02\0\0\0"
        "\0\0\0\0"  // its descriptor
        "PK\x01\x02"
        "\x14\0"
        "\x14\0"
        "\x08\x08"
        "\x08\0"
        "\0\0"
        "\x21\0"
        "\0\0\0\0"
        "\x02\0\0\0"
        "\0\0\0\0"
        "\x01\0"
        "\0\0"
        "\0\0"
        "\0\0"
        "\0\0"
        "\0\0\0\0"
        "\0\0\0\0"
        "a"
        "PK\x05\x06"
        "\0\0"
        "\0\0"
        "\x01\0"
        "\x01\0"
        "\x2F\0\0\0"
        "\x31\0\0\0"
        "\0\0",
        49 + 47 + 22);
    EXPECT_EQ(std::string(sink.bytes.begin(), sink.bytes.end()), expected);
}

TEST(ZipWriter, AnotherProgramUnpacksTheSameBytes)
{
    if (!OutputOf("gsf --version 2>&1"))
    {
        GTEST_SKIP() << "gsf (package libgsf-bin) is not installed";
    }
    // Numbers of a linear congruence, which do not compress, and then zeros, which do.
    std::string content;
    std::uint32_t number = 1;
    for (int i = 0; i < 200'000; ++i)
    {
        number = number * 1664525 + 1013904223;
        content += static_cast<char>(number >> 24);
    }
    content += std::string(100'000, '\0');
    MemorySink sink;
    ZipWriter zip(sink);
    zip.BeginFile("folder/one");
    for (std::size_t i = 0; i < content.size(); i += 70'000)
    {
        const std::string part = content.substr(i, 70'000);
        zip.Write(part.data(), part.size());
    }
    zip.EndFile();
    zip.BeginFile("two");
    zip.Write("second", 6);
    zip.EndFile();
    zip.Finish();
    EXPECT_LT(sink.bytes.size(), 202'000u);

    const TemporaryFile file("archive.zip", sink.bytes);
    const std::string path = static_cast<const char*>(file.Path());
    EXPECT_EQ(OutputOf("gsf cat " + path + " folder/one") == content, true);
    EXPECT_EQ(OutputOf("gsf cat " + path + " two"), "second");
}
