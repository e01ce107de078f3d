// The image of one record; the first byte selects its kind.

#include "fuzz/Fuzz.hh"

#include <sstream>

namespace {

template <class Record>
void restore(RtiBuffer &buffer) {
    Record record(buffer);
    std::ostringstream os;
    record.dump(os);
    RtiBuffer same;
    record.save(same);
    record.diff(same, os);
    checkThatItReturns(record);
    const std::string image = bytesOf(record);
    same.rewind();
    FUZZ_CHECK(!isRefused([&] { record.restore(same); })); // into the object that it was saved from
    FUZZ_CHECK(bytesOf(record) == image);
}

template <class Handle>
void restoreHandle(RtiBuffer &buffer) {
    Handle handle;
    handle.restore(buffer);
    RtiBuffer same;
    handle.save(same);
    Handle copy;
    copy.restore(same);
    FUZZ_CHECK(copy == handle);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
    if (size == 0)
        return 0;
    constexpr void (*kKinds[])(RtiBuffer &) = {restore<RtiFedAttribute>,          restore<RtiFedParameter>,
                                               restore<RtiFedDimension>,          restore<RtiFedSpace>,
                                               restore<RtiFedObjectClass>,        restore<RtiFedInteractionClass>,
                                               restoreHandle<RtiAttributeHandle>, restoreHandle<RtiSpaceHandle>};
    RtiBuffer buffer(data + 1, size - 1);
    isRefused([&] { kKinds[data[0] % std::size(kKinds)](buffer); });
    return 0;
}
