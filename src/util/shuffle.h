#pragma once

#include <QRandomGenerator>
#include <random>

namespace kelvar {

/// Puts a list's elements into a random order in place, every order being as likely as any other,
/// and returns the list. `List` has a size and an index, like `QList`.
template <class List>
List& shuffle(List& list) {
  using Distance = std::uniform_int_distribution<qsizetype>;
  Distance distance;
  for (qsizetype i = 0, last = qsizetype(list.size()) - 1; i < last; ++i) {
    const qsizetype other =
        i + distance(*QRandomGenerator::global(), Distance::param_type(0, last - i));
    std::swap(list[i], list[other]);
  }
  return list;
}

}  // namespace kelvar
