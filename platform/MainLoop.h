#pragma once

#include <QObject>

#include <functional>

namespace vantoro {

/// Calls in a later turn of the main loop, in the order of asking, unless `target` is gone by then. From any thread
/// that knows the target, an object of the main thread, to be alive; returns at once.
void performOnMainThread(QObject* target, std::function<void()> call);

}
