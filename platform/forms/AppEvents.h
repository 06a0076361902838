#pragma once
// AppEvents: the toolkit's application with the rules of the house for keys, clicks and focus.

#include <QApplication>

namespace kv {

class AppEvents : public QApplication {
public:
    AppEvents(int& argc, char** argv);
    bool notify(QObject* object, QEvent* event) override;
};

}  // namespace kv
