#pragma once

#include <QLoggingCategory>

// Printing's diagnostics; the person sees none of them.
Q_DECLARE_LOGGING_CATEGORY(lcPrint)
