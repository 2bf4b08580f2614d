// What a lying worker may send: messages, entries, descriptions, outcomes, and a ring whose memory holds anything.
#include "engine/cage/ring.h"

#include <algorithm>
#include <cstdlib>

namespace {

using namespace vantoro;
using namespace vantoro::cage;

void require(bool holds)
{
    if (!holds)
        std::abort();
}

void readRing(ConstBytes input)
{
    static auto area = SharedArea::create(1);
    require(area.has_value());
    auto& state = area->ring(0);
    std::uint64_t head = 0;
    std::memcpy(&head, input.data(), std::min(input.size(), sizeof head));
    // Mostly a head that could be true, so that records are reached.
    state.head.store(head % 16 == 15 ? head : head % kRingCapacity / 8 * 8);
    state.tail.store(0);
    const auto filled = std::min<std::size_t>(input.size(), 4096);
    std::copy_n(input.begin(), filled, area->ringBytes(0));
    RingReader reader(*area, 0);
    std::uint64_t taken = 0;
    while (true) {
        const auto record = reader.next();
        if (!record || !*record)
            break;
        taken += (*record)->payload.size() + sizeof(RecordHeader);
        require(taken <= kRingCapacity);
        reader.release();
    }
    std::fill_n(area->ringBytes(0), filled, std::byte{0});
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const ConstBytes input(reinterpret_cast<const std::byte*>(data), size);
    if (const auto message = parseMessage(input))
        require(message->values.size() <= size / sizeof(std::uint64_t));
    const Limits limits;
    EntryParser parser;
    if (parser.parse(input, limits))
        require(parser.entry().index < limits.entries && parser.entry().name.size() <= size);
    if (const auto info = parseInfo(input))
        require(info->volumes.size() <= size);
    (void)parseOutcome(input);
    readRing(input);
    return 0;
}
