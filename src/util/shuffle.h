#pragma once

#include <QRandomGenerator>
#include <random>

namespace kelvar {

/// Shuffles a list in place, with every order equally likely, and returns it. `List` needs a size
/// and an index operator, like `QList`.
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
