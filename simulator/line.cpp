#include "simulator/line.h"

#include <algorithm>

namespace simulator {

void Line::send(const Answer& answer, qint64 now_us) {
  const qint64 start = now_us + duration(answer.request.size()) + answer.delay_ms * qint64{1000};
  const auto later = [](qint64 moment, const Pending& other) { return moment < other.start; };
  pending_.insert(std::upper_bound(pending_.begin(), pending_.end(), start, later),
                  {answer, start});
}

Line::Arrival Line::take(qint64 now_us) {
  Arrival arrival;
  while (!pending_.empty()) {
    Pending& front = pending_.front();
    const qint64 begin = begin_of(front);
    const qint64 size = front.answer.bytes.size();
    qint64 arrived = front.taken;
    while (arrived < size && begin + duration(arrived + 1) <= now_us) ++arrived;
    arrival.bytes += front.answer.bytes.mid(front.taken, arrived - front.taken);
    front.taken = arrived;
    if (arrived < size || begin > now_us) break;
    arrival.unplugged = front.answer.unplug;
    arrival.ended.push_back(std::move(front.answer));
    free_at_ = begin + duration(size);
    pending_.pop_front();
    if (arrival.unplugged) {
      pending_.clear();
      break;
    }
  }
  return arrival;
}

std::optional<qint64> Line::next_due(qint64 not_before) const {
  if (pending_.empty()) return std::nullopt;
  const Pending& front = pending_.front();
  const qint64 next = std::min<qint64>(front.taken + 1, front.answer.bytes.size());
  const qint64 end = begin_of(front) + duration(front.answer.bytes.size());
  return std::min(std::max(begin_of(front) + duration(next), not_before), end);
}

}  // namespace simulator
