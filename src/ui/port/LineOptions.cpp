#include "ui/port/LineOptions.h"

#include <QHBoxLayout>

#include "ports/Connector.h"
#include "ui/controls/Texts.h"

QString LineCaption(int line) {
    return QString::fromLatin1(kConnector[static_cast<std::size_t>(line)].caption);
}

int ConnectorPin(int line) {
    return kConnector[static_cast<std::size_t>(line)].pin;
}

void SelectOption(QButtonGroup& group, QAbstractButton* option) {
    if (option != nullptr) {
        option->setChecked(true);
    } else if (QAbstractButton* checked = group.checkedButton()) {
        group.setExclusive(false);
        checked->setChecked(false);
        group.setExclusive(true);
    }
}

void TabToSelected(QButtonGroup& group) {
    QObject::connect(&group, &QButtonGroup::idToggled, &group, [&group] {
        const QAbstractButton* selected = group.checkedButton();
        const auto options = group.buttons();
        for (QAbstractButton* option : options) {
            const bool stop = selected == nullptr || option == selected;
            option->setFocusPolicy(stop ? Qt::StrongFocus : Qt::ClickFocus);
        }
    });
}

LineOptions::LineOptions(const QString& caption, QWidget* parent)
    : QGroupBox(parent), options_(new QButtonGroup(this)) {
    constexpr QMargins kMargins(6, 2, 6, 4);
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(kMargins);
    row->setSpacing(kMargins.left());
    for (int line = 0; line < kPortLines; ++line) {
        auto* option = new QRadioButton(LineCaption(line));
        option->setToolTip(tr("Pin %1 of the 25-way connector").arg(ConnectorPin(line)));
        options_->addButton(option, line);
        row->addWidget(option);
    }
    row->addStretch();
    Caption(caption);
    TabToSelected(*options_);
    connect(options_, &QButtonGroup::idToggled, this, [this](int line, bool on) {
        if (on) {
            emit Selected(line);
        }
    });
}

void LineOptions::Caption(const QString& caption) {
    caption_ = caption;
    constexpr int kAroundTitle = 4;   // In letters; a longer title would widen the frame.
    const int room = layout()->sizeHint().width() - kAroundTitle * fontMetrics().averageCharWidth();
    setTitle(WithoutMnemonics(fontMetrics().elidedText(caption, Qt::ElideMiddle, room)));
    setToolTip(fontMetrics().horizontalAdvance(caption) > room ? caption : QString());
    setAccessibleName(caption);
    for (int line = 0; line < kPortLines; ++line) {
        Option(line)->setAccessibleName(tr("%1: line %2").arg(caption, LineCaption(line)));
    }
}

QRadioButton* LineOptions::Option(int line) const {
    return static_cast<QRadioButton*>(options_->button(line));
}

void LineOptions::Select(std::optional<int> line) {
    SelectOption(*options_, line ? Option(*line) : nullptr);
}
