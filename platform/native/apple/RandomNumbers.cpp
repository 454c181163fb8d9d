// Random numbers from the system's own generator. It is asked for one at a time, since it knows of forks and
// numbers that lie ahead do not: parent and child would draw the same ones.
#include "TessarinPlatform/RandomNumbers.h"

#include <cstdlib>

namespace tessarin {
namespace {

struct Generator {
    detail::NumbersAhead ahead;
    std::uint32_t number = 0;
};

thread_local constinit Generator generator;

} // namespace

RandomDraws::RandomDraws() : ahead_(generator.ahead) {}

void RandomDraws::provideNumbers() {
    Generator& own = generator;
    own.number = ::arc4random();
    own.ahead = {&own.number, &own.number + 1};
}

std::uint32_t arc4random() { return RandomDraws()(); }

// What lay ahead of the supplied numbers is put back as it was: other supplied ones, or a number of the
// system's that has been drawn.
SuppliedRandomNumbers::SuppliedRandomNumbers(std::span<const std::uint32_t> numbers)
    : numbers_(numbers), replaced_(generator.ahead) {
    generator.ahead = {numbers.data(), numbers.data() + numbers.size()};
}

SuppliedRandomNumbers::~SuppliedRandomNumbers() { generator.ahead = replaced_; }

std::size_t SuppliedRandomNumbers::drawnCount() const {
    const detail::NumbersAhead& ahead = generator.ahead;
    const bool areLeft = ahead.end == numbers_.data() + numbers_.size();
    return areLeft ? numbers_.size() - static_cast<std::size_t>(ahead.end - ahead.next) : numbers_.size();
}

} // namespace tessarin
