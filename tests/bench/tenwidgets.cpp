// The least that a window costs with Qt: ten plain widgets, and nothing else.
//
//     tenwidgets [--tick]      with --tick, one of them shows another text every second

#include <chrono>

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

int main(int argc, char **argv) {
    const QApplication application(argc, argv);
    QWidget window;
    window.setWindowTitle(u"Ten widgets"_s);
    auto *layout = new QVBoxLayout(&window);
    for (int i = 1; i <= 5; ++i) {
        layout->addWidget(new QLabel(u"Label %1"_s.arg(i)));
        layout->addWidget(new QPushButton(u"Button %1"_s.arg(i)));
    }
    QTimer clock;
    if (QApplication::arguments().contains(u"--tick"_s)) {
        auto *shown = window.findChild<QLabel *>();
        clock.setTimerType(Qt::PreciseTimer);
        clock.callOnTimeout(
            shown, [shown, seconds = 0]() mutable { shown->setText(QString::number(++seconds)); });
        clock.start(std::chrono::seconds(1));
    }
    window.show();
    return QApplication::exec();
}
