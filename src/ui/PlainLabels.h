#pragma once

class QCoreApplication;

/// From now on labels and tooltips show their texts as they are: what a user typed as a title, or a server
/// answered, is no markup that fetches pictures. A label of the program's own markup says so by its format.
void keepLabelsPlain(QCoreApplication& application);
