// A picker of hours, minutes and seconds whose value is a number of seconds.
#pragma once

#include <QDateTimeEdit>

// The value of the picker is a time of day on 1999-01-01; the date is never shown.
QDateTimeEdit* make_time_picker(const QString& name, QWidget* parent);

// Get and set the picker's value: seconds since that day's midnight, 0..86399.
qint64 picked_seconds(const QDateTimeEdit& picker);
void set_picked_seconds(QDateTimeEdit& picker, qint64 seconds);
