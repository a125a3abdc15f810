#pragma once

#include <chrono>

#include <QCoreApplication>
#include <QTimer>

/// The program's event loop, run for as long as a test needs it.
namespace eventloop {

/// What run() gives where the program did not end by itself.
inline constexpr int StillRunning = 70;
inline constexpr int Hung = 99;

/// Calls `step` from the event loop, then lets all events that it caused be delivered.
template <class Step>
int run(Step step) {
    // Whatever is still due when the loop ends goes with this object.
    QObject context;
    QTimer::singleShot(std::chrono::seconds(30), &context, [] { QCoreApplication::exit(Hung); });
    QTimer::singleShot(0, &context, [&] {
        step();
        // After what `step` put off to the next turn of the loop.
        QTimer::singleShot(0, &context, [&] {
            QTimer::singleShot(0, &context, [] { QCoreApplication::exit(StillRunning); });
        });
    });
    return QCoreApplication::exec();
}

}  // namespace eventloop
