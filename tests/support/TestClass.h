#pragma once

#include <QObject>
#include <QTest>
#include <functional>
#include <memory>
#include <vector>

/// The test classes of this program, in the order in which they were announced.
std::vector<std::function<std::unique_ptr<QObject>()>>& testClasses();

/// Announces a class of Qt Test slots; stands at the end of its file.
template <class T>
struct AnnounceTest {
    AnnounceTest() {
        testClasses().push_back([] { return std::make_unique<T>(); });
    }
};
