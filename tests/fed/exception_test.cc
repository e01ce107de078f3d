#include "tests/Support.hh"

template <class Exception>
class ExceptionTest : public testing::Test {};

using AllExceptions =
    testing::Types<RTI::NameNotFound, RTI::ObjectClassNotDefined, RTI::AttributeNotDefined,
                   RTI::InteractionClassNotDefined, RTI::InteractionParameterNotDefined, RTI::SpaceNotDefined,
                   RTI::DimensionNotDefined, RTI::InvalidTransportationHandle, RTI::InvalidOrderingHandle,
                   RTI::CouldNotOpenFED, RTI::ErrorReadingFED, RTI::RTIinternalError, RtiBufferUnderflow,
                   RtiBufferOverflow, RTI::ArrayIndexOutOfBounds>;
TYPED_TEST_SUITE(ExceptionTest, AllExceptions);

TYPED_TEST(ExceptionTest, IsClonedAndThrownAsItself) {
    TypeParam original("why");
    EXPECT_EQ(original._serial, 0u);
    original._serial = 7;
    const RTI::Exception &asBase = original;

    const std::unique_ptr<RTI::Exception> clone(asBase.cloneSelf());
    const RTI::Exception &cloned = *clone;
    EXPECT_TRUE(typeid(cloned) == typeid(TypeParam));
    EXPECT_STREQ(clone->_reason, "why");
    EXPECT_STREQ(clone->_name, TypeParam::_ex);
    EXPECT_EQ(clone->_serial, 0u);

    try {
        asBase.throwSelf();
    } catch (const TypeParam &thrown) {
        EXPECT_STREQ(thrown._reason, "why");
        EXPECT_EQ(thrown._serial, 7u);
        return;
    }
    FAIL();
}

TEST(Exception, BaseIsClonedAndThrownToo) {
    RTI::Exception base("why");
    base._serial = 7;
    const std::unique_ptr<RTI::Exception> clone(base.cloneSelf());
    EXPECT_STREQ(clone->_reason, "why");
    EXPECT_EQ(clone->_serial, 0u);
    EXPECT_EQ(reasonOf<RTI::Exception>([&clone] { clone->throwSelf(); }), "why");
}

TEST(Exception, CopiesOutliveTheirOrigin) {
    auto origin = std::make_unique<RTI::NameNotFound>("a reason");
    const RTI::NameNotFound copy = *origin;
    RTI::Exception base(nullptr);
    EXPECT_STREQ(base._reason, "");
    base = *origin;
    origin.reset();
    EXPECT_STREQ(copy._reason, "a reason");
    EXPECT_STREQ(base._reason, "a reason");
    static_assert(std::is_nothrow_copy_constructible_v<RTI::NameNotFound>);
}
