#include "race/ranking.h"

#include <algorithm>
#include <set>

namespace quorvane {

std::array<int, 4> PlacesOf(const std::array<Finish, 4>& lanes) {
  std::array<std::size_t, 4> order = {0, 1, 2, 3};
  std::ranges::stable_sort(order, {}, [&](std::size_t lane) { return lanes[lane].final; });
  std::set<int> taken;
  for (const Finish& lane : lanes) taken.insert(lane.placeByHand);
  std::array<int, 4> places{};
  int place = 0;
  for (const std::size_t lane : order) {
    if (lanes[lane].locked || lanes[lane].final >= kNoResult) continue;
    do ++place;
    while (taken.contains(place));
    places[lane] = place;
  }
  return places;
}

}  // namespace quorvane
