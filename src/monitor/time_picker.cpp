#include "monitor/time_picker.h"

namespace {

const QDateTime base(QDate(1999, 1, 1), QTime(0, 0), Qt::UTC);

}  // namespace

QDateTimeEdit* make_time_picker(const QString& name, QWidget* parent) {
  auto* picker = new QDateTimeEdit(parent);
  picker->setObjectName(name);
  picker->setTimeSpec(Qt::UTC);
  picker->setDisplayFormat(QStringLiteral("HH:mm:ss"));
  picker->setDateTime(base);
  return picker;
}

qint64 picked_seconds(const QDateTimeEdit& picker) {
  return base.secsTo(picker.dateTime());
}

void set_picked_seconds(QDateTimeEdit& picker, qint64 seconds) {
  picker.setDateTime(base.addSecs(seconds));
}
