#pragma once

#include <QAction>
#include <QMenuBar>
#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "ui/controls/ControlArray.h"

/// The menu tree. Every item is an action that carries its name ("mnuIncN", "mnuRecent(3)"); a submenu's name is that
/// of its own action.
class MainMenu {
public:
    explicit MainMenu(QMenuBar& bar);

    [[nodiscard]] QAction* Item(const QString& name) const;

    /// Fills the device menus. `group` counts as kDeviceGroups does; without devices its menu, or in the first group
    /// its item, is hidden.
    void ShowDevices(std::size_t group, const std::vector<std::string>& devices);

    /// The recent list: the captions of its items are the list itself.
    void ShowRecent(const std::vector<std::string>& captions);
    [[nodiscard]] std::vector<std::string> Recent() const;

    /// An item that picks the mode of that number of the part file.
    void AddMode(int number, const std::string& caption);
    void ClearModes();

    // What picking an item does. The window sets these before the user can pick anything.
    std::function<void(std::size_t group, const std::string& device)> devicePicked;
    std::function<void(const std::string& device)> recentPicked;
    std::function<void(int mode)> modePicked;

private:
    /// An item that is repeated: its members stand together, in front of the item that follows them.
    struct Repeated {
        ControlArray<QAction> members;
        QMenu* menu;
        QAction* behind = nullptr;
    };

    void Build();
    void AddRow(const struct MenuRow& row);
    QAction* AddMember(Repeated& array, const QString& caption);
    void ShowMember(Repeated& array, int index, const std::string& caption);

    QMenuBar& bar_;
    std::vector<QMenu*> open_{nullptr};   ///< The menu that rows of each level go into.
    std::vector<Repeated> devices_;       ///< One for each group.
    std::vector<Repeated> recent_;
    std::vector<Repeated> modes_;
    std::vector<int> modeNumbers_;     ///< Of the items.
    Repeated* unfinished_ = nullptr;   ///< Still waits for the item behind it.
};
