#pragma once
// Counts the C++ heap allocations made while a scope is open, to prove that a
// piece of per-frame code allocates nothing of its own. The test executable
// replaces the global operator new and delete (with malloc and free) so every
// allocation can be seen; outside a counting scope they behave as usual.
// Allocations inside C libraries (SDL, FreeType) use malloc and are not
// counted: only our own strings, vectors and the like are.

namespace vorn::test {

class AllocationCounter {
public:
    AllocationCounter();
    ~AllocationCounter();
    AllocationCounter(const AllocationCounter&) = delete;
    AllocationCounter& operator=(const AllocationCounter&) = delete;

    // Allocations since this counter was opened.
    long count() const;

private:
    long start;
};

}  // namespace vorn::test
