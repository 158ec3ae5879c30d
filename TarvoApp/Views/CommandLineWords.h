#pragma once

#include <QTranslator>

namespace tarvo {

/// What Qt itself says of a command line, in Spanish: its own translations are not on every machine.
class CommandLineWords final : public QTranslator {
  public:
    using QTranslator::QTranslator;

    [[nodiscard]] QString translate(const char* context, const char* sourceText, const char* disambiguation,
                                    int n) const override;
    [[nodiscard]] bool isEmpty() const override { return false; }
};

} // namespace tarvo
