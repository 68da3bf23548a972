#pragma once

class QDateTimeEdit;
class QTime;

/// Dates and times are typed as people write them, "8:30", "8.30", "0830", "5/12/2026": a separator behind a
/// part that is complete, and was left by itself, does not skip the next one; months may be numbers.
void takeTypedSeparators(QDateTimeEdit& edit);

/// A box for a time of the day shows seconds only where the time has them.
void showTime(QDateTimeEdit& edit, QTime time);
