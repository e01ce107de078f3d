#include "infrastructure/RtiStringUtility.hh"
#include "tests/Support.hh"

using namespace std::string_literals;

TEST(Buffer, WritesNumbersMostSignificantByteFirst) {
    RtiBuffer buffer;
    buffer.put(0x01020304UL);
    buffer.put(-2L);
    RtiStringUtility::putString("a\0b"s, buffer);
    const std::string bytes(reinterpret_cast<const char *>(buffer.data()), buffer.size());
    EXPECT_EQ(bytes, "\1\2\3\4\xFF\xFF\xFF\xFE\0\0\0\3a\0b"s);
}

TEST(Buffer, ReadsBackTheWholeRangeOf32Bits) {
    RtiBuffer buffer;
    const unsigned long unsignedOnes[] = {0, 1, 4294967295UL};
    const long signedOnes[] = {0, -1, 2147483647L, -2147483647L - 1};
    for (const unsigned long value : unsignedOnes)
        buffer.put(value);
    for (const long value : signedOnes)
        buffer.put(value);
    RtiStringUtility::putString("", buffer);

    unsigned long unsignedRead[3];
    long signedRead[4];
    buffer.get(unsignedRead, 3);
    buffer.get(signedRead, 4);
    EXPECT_TRUE(std::equal(unsignedRead, unsignedRead + 3, unsignedOnes));
    EXPECT_TRUE(std::equal(signedRead, signedRead + 4, signedOnes));
    EXPECT_EQ(RtiStringUtility::getString(buffer), "");
    EXPECT_EQ(buffer.remaining(), 0u);
    buffer.rewind();
    EXPECT_EQ(buffer.remaining(), buffer.size());
}

TEST(Buffer, RefusesWhatDoesNotFit) {
    if constexpr (sizeof(long) > 4) {
        RtiBuffer buffer;
        EXPECT_EQ(reasonOf<RtiBufferOverflow>([&] { buffer.put(0xFFFFFFFFUL + 1); }),
                  "the number 4294967296 does not fit into the 32 bits of an image");
        reasonOf<RtiBufferOverflow>([&] { buffer.put(0x7FFFFFFFL + 1); });
        reasonOf<RtiBufferOverflow>([&] { buffer.put(-0x7FFFFFFFL - 2); });
        EXPECT_EQ(buffer.size(), 0u);
    }
}

TEST(Buffer, SaysWhatWasWantedAndWhatIsLeft) {
    RtiBuffer buffer("\0\0\0\7\0\0", 6);
    unsigned long values[2] = {8, 9};
    EXPECT_EQ(reasonOf<RtiBufferUnderflow>([&] { buffer.get(values, 2); }),
              "byte 0: 2 numbers of 4 bytes wanted, 6 bytes left");
    EXPECT_EQ(values[0], 8u);
    EXPECT_EQ(buffer.getUnsignedLong(), 7u); // the failure did not move the position
    EXPECT_EQ(reasonOf<RtiBufferUnderflow>([&] { buffer.getUnsignedLong(); }),
              "byte 4: 1 number of 4 bytes wanted, 2 bytes left");
    // A count whose bytes overflow the address range.
    reasonOf<RtiBufferUnderflow>([&] { buffer.get(values, ~0UL / 4 + 2); });

    EXPECT_EQ(reasonOf<RtiBufferUnderflow>([&] { buffer.getBytes(values, 3); }),
              "byte 4: 3 bytes wanted, 2 bytes left");

    RtiBuffer string("\x7F\xFF\xFF\xFFx", 5);
    EXPECT_EQ(reasonOf<RtiBufferUnderflow>([&] { RtiStringUtility::getString(string); }),
              "byte 4: a string of 2147483647 bytes, 1 left");
}

// A derived class sees each handle as an object, and is not asked for counts of bytes.
TEST(Buffer, OfADerivedClassGetsHandlesAsObjects) {
    struct Counting : RtiBuffer {
        using RtiBuffer::get, RtiBuffer::put;
        void put(RtiSaveableType &object) override { RtiBuffer::put((++numObjects, object)); }
        void get(RtiSaveableType &object) override { RtiBuffer::get((++numObjects, object)); }
        int numObjects = 0;
    } buffer;
    const std::string longName(200000, 'x');
    const auto database = emptyDatabase();
    database->addObjectClassAttribute(database->addObjectClass("R"), longName, 1, 1, 0);
    database->save(buffer);
    EXPECT_EQ(buffer.numObjects, 15); // two records; handles: two of the class, four of the attribute, a pair, counters
    const RtiFedDatabase copy(buffer);
    EXPECT_EQ(buffer.numObjects, 28);
    EXPECT_EQ(copy.getAttributeName(1, 1), longName);
}

// Records are read without the buffer's operations for each number; its position follows nevertheless.
TEST(Buffer, IsAtTheNextValueAfterARestore) {
    RtiBuffer buffer;
    buffer.put(7UL);
    RtiFedParameter(5, "Speed").save(buffer);
    buffer.put(9UL);
    EXPECT_EQ(buffer.getUnsignedLong(), 7);
    EXPECT_EQ(RtiFedParameter(buffer).getHandle(), 5);
    EXPECT_EQ(buffer.getUnsignedLong(), 9);

    RtiBuffer truncated(buffer.data() + 4, 4 + 5 + 3); // its handle lacks a byte
    EXPECT_EQ(reasonOf<RtiBufferUnderflow>([&] { RtiFedParameter{truncated}; }),
              "byte 9: 1 number of 4 bytes wanted, 3 bytes left");
    EXPECT_EQ(truncated.remaining(), 3u);
    EXPECT_EQ(reasonOf<RtiBufferUnderflow>([&] { truncated.skip(4); }), "byte 9: 4 bytes wanted, 3 bytes left");
    truncated.skip(3);
    EXPECT_EQ(truncated.remaining(), 0u);
}
