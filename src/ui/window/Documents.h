#pragma once

#include <QString>

/// Where the documents begin: their first page, or the folder if it has none. They lie in `docs` beside the program, or
/// where an installation puts them. Empty if there are none. `programs` is the folder of the executable.
QString FindDocuments(const QString& programs);
