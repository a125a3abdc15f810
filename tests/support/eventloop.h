#pragma once

#include <chrono>

#include <QCoreApplication>
#include <QTimer>

/// The program's event loop, run for as long as a test needs it.
namespace eventloop {

/// What run() returns if the program did not end by itself.
inline constexpr int StillRunning = 70;
inline constexpr int Hung = 99;

/// Calls `step` from the event loop, then lets all events that it caused be delivered.
template <class Step>
int run(Step step) {
    // Timers that are still due when the loop ends are freed with this object.
    QObject context;
    QTimer::singleShot(std::chrono::seconds(30), &context, [] { QCoreApplication::exit(Hung); });
    QTimer::singleShot(0, &context, [&] {
        step();
        // Runs after what `step` has postponed to the next turn of the loop.
        QTimer::singleShot(0, &context, [&] {
            QTimer::singleShot(0, &context, [] { QCoreApplication::exit(StillRunning); });
        });
    });
    return QCoreApplication::exec();
}

}  // namespace eventloop
