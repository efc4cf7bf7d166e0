#ifndef TESTS_SUPPORT_FAILING_ALLOCATOR_H
#define TESTS_SUPPORT_FAILING_ALLOCATOR_H

namespace ktltest {

// The programs linked with the failing allocator replace the global allocation functions, so
// that the library's non-throwing allocations can be made to fail on demand.
// -1: never fail. N >= 0: the non-throwing allocation after N more succeeds fails, once.
extern int failCountdown;

}  // namespace ktltest

#endif
