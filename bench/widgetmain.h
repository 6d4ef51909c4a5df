// SPDX-FileCopyrightText: The Quillfen authors
// SPDX-License-Identifier: Apache-2.0
#pragma once

#include "ui/style/housestyle.h"

#include <QApplication>

#include <benchmark/benchmark.h>

namespace quillfen::bench {

/// The main function of a program that measures widgets, without a display unless one is asked for.
inline int measureWidgets(int argc, char **argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM")) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
    }
    QApplication application(argc, argv);
    applyHouseLook(application);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}

} // namespace quillfen::bench
