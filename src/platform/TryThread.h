#pragma once

#include <system_error>
#include <thread>
#include <utility>

namespace kelvar {

/// A thread that runs `work`, or one that is not joinable where the system has none to give. Its
/// caller then does the work alone.
template <typename Work>
std::thread tryThread(Work&& work) {
  try {
    return std::thread(std::forward<Work>(work));
  } catch (const std::system_error&) {
    return {};
  }
}

}  // namespace kelvar
