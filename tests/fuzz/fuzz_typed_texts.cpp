// Texts that a user types into number boxes and titles.
#include <cmath>

#include "base/numbers.h"
#include "base/times.h"
#include "device/pattern.h"
#include "device/texts.h"
#include "fuzz/fuzz.h"
#include "monitor/alarms.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const QString text =
      QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
  const bool number = is_number(text);
  double value = 0;
  require(holds([&] { value = to_double(text); }) == number);
  if (number) {
    // A value shown with two decimals is again a number, and close to the value.
    const QString shown = fixed2(value);
    require(is_number(shown));
    if (std::abs(value) < 1e9) require(std::abs(to_double(shown) - value) < 0.00501);
    float single = 0;
    if (holds([&] { single = to_float(text); })) {
      require(to_float(general_number(single)) == single ||
              std::abs(to_double(general_number(single)) - double{single}) <=
                  std::abs(double{single}) * 1e-6);
    }
    holds([&] { whole_with_leading_blank(to_int32(value)); });
  }
  alarm_limits(text, text);

  PatternFrame pattern{};
  holds([&] {
    encode_pattern({.startup_type = StartupType::start_up, .all_data = text},
                   QDateTime(QDate(2026, 3, 1), QTime(10, 0), Qt::UTC), pattern);
  });
  const DescriptionFrame texts = encode_texts(text, text);
  text_of_units(texts.data(), 16);

  if (const QDateTime time = stamp_time(text); time.isValid()) require(stamp_text(time) == text);
  return 0;
}
