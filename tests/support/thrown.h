#ifndef TESTS_SUPPORT_THROWN_H
#define TESTS_SUPPORT_THROWN_H

#include <functional>
#include <string>

#include <util/dtException.h>

namespace ktltest {

// The message of the exception of type E that fn throws, or a text saying what happened
// instead: another DtException, or none.
template <class E>
std::string thrownMessage(const std::function<void()>& fn) {
  try {
    fn();
  } catch (const E& e) {
    return e.message();
  } catch (const KORRti::DtException& e) {
    return std::string("<other DtException> ") + e.message();
  }
  return "<no exception>";
}

}  // namespace ktltest

#endif
