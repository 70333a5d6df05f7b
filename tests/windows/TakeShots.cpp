// take_shots TABLES READY: opens the windows that the pictures show, one after the other. For each it writes
// the name of the picture into the file READY and waits until that file is gone.
#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <string>

#include "component/ui/fgGrid.h"
#include "component/ui/frmDBfEditSearch.h"
#include "tests/windows/FormDriver.h"
#include "tests/windows/SmallTable.h"

namespace {

using zu::component::fgGrid;
using zu::windows::FormDriver;
using zu::windows::RunningScript;

class Camera {
public:
    Camera(std::string tables, std::string ready, bool large)
        : tables_(std::move(tables)), ready_(std::move(ready)), large_(large) {}

    /// Runs a script, lets `act` bring the window into its state, and has the picture taken.
    template <class Act>
    void Take(const std::string& name, const std::string& call, Act&& act) {
        const std::wstring folder = zu::windows::FreshFolder("shot");
        for (const char* file :
             {"customers.dbf", "customers.cdx", "orders.dbf", "orders.cdx", "orders.fpt"}) {
            const std::filesystem::path target = std::filesystem::path(folder) / file;
            CopyFileW((std::filesystem::path(tables_) / file).c_str(), target.c_str(), FALSE);
        }
        zu::windows::WritePeople(folder, {});
        RunningScript script(folder, "Set result = Nothing\n" + call + "\n");
        FormDriver form(script);
        if (!form.Open()) {
            std::cerr << name << ": the window does not open\n" << script.Output();
            failed_ = true;
            return;
        }
        act(form, script);
        std::ofstream(ready_) << name;
        if (!zu::windows::WaitUntil([this] { return !std::filesystem::exists(ready_); })) failed_ = true;
    }

    std::string Size(int height, int width) const {
        const int factor = large_ ? 2 : 1;
        return std::to_string(height * factor) + ", " + std::to_string(width * factor);
    }
    bool isLarge() const { return large_; }
    bool hasFailed() const { return failed_; }

private:
    std::string tables_;
    std::string ready_;
    bool large_;
    bool failed_ = false;
};

void TakeAll(Camera& camera) {
    const std::string edit = "DbfEdit Args(0) & \">customers\", \"Customers\", \"\", \"DOWN\", " +
                             camera.Size(420, 760) +
                             ", , , \"ID,NAME,CONTACT,CITY,COUNTRY,SINCE,CREDIT,ACTIVE\", True";
    const auto nothing = [](FormDriver& form, RunningScript&) { form.WaitForCell(2, 1); };
    if (camera.isLarge()) {
        camera.Take("scaled", edit, nothing);
        return;
    }
    camera.Take("edit", edit, nothing);
    camera.Take("editing", edit, [](FormDriver& form, RunningScript&) {
        form.Press(VK_DOWN);
        form.Press(VK_DOWN);
        form.Press(VK_RIGHT);
        form.WaitForCell(4, 2);
        form.Press(VK_F2);
        form.WaitForEditor(true);
    });
    camera.Take("tip", edit, [](FormDriver& form, RunningScript& script) {
        const LONG right = static_cast<LONG>(form.State(fgGrid::kColumnLeft, 3));
        form.Drag({right - 1, 8}, {right - 130, 8});
        script.WaitFor([&] { return form.State(fgGrid::kColumnLeft, 3) < right; });
        form.RestAt(form.MiddleOf(5, 2));
        form.WaitForState(fgGrid::kTipShown, 1);
    });
    camera.Take("refused", edit, [](FormDriver& form, RunningScript&) {
        form.Click(form.MiddleOf(4, 1));
        form.WaitForCell(4, 1);
        form.Type(L"twelve");
        form.WaitForEditor(true);
        form.Press(VK_RETURN);
        form.WaitForState(fgGrid::kNoteShown, 1);
    });
    camera.Take("deleted", edit, [](FormDriver& form, RunningScript&) {
        form.Press(VK_DOWN);
        form.Press(VK_DOWN);
        form.Press({'T', true});
        form.WaitForLabel(L"Deleted");
    });
    camera.Take("search", edit, [](FormDriver& form, RunningScript&) {
        form.Press(VK_RIGHT);
        form.Press({'F', true});
        form.WaitForDialog(true);
        form.Type(L"Wind");
        form.Press(VK_RETURN);
        zu::windows::WaitUntil([&] { return form.State(fgGrid::kCurrentRow) > 2; });
    });
    camera.Take("pick",
                "Set result = DbfPick(Args(0) & \">customers\", \"Whose orders?\", \"(ACTIVE)\", " +
                    camera.Size(420, 620) + ", , , \"ID,NAME,CITY,COUNTRY\")",
                [](FormDriver& form, RunningScript&) {
                    form.Press(VK_NEXT);
                    form.Press(VK_UP);
                    form.WaitForCell(13, 1);
                });
    camera.Take("question", edit, [](FormDriver& form, RunningScript&) {
        form.Press(VK_RIGHT);
        form.WaitForCell(2, 2);
        form.Type(L"Harbour Bricks Ltd");
        form.WaitForEditor(true);
        form.Press({'X', false, false, true});
        form.WaitForBox();
    });
    camera.Take("empty", "DbfEdit Args(0) & \">people\", \"People\", , , " + camera.Size(300, 600), nothing);
    camera.Take(
        "memo",
        "DbfEdit Args(0) & \">orders\", \"Orders\", \"NOTE LIKE 'Fragile%' OR (PAID AND NOT PAID)\", , " +
            camera.Size(420, 760) + ", , , \"ID,GOODS,AMOUNT,NOTE\", True",
        [](FormDriver& form, RunningScript&) {
            form.Press(VK_END);
            form.WaitForCell(2, 4);
            form.Press(VK_F2);
            form.WaitForEditor(true);
        });
}

}  // namespace

int main(int count, char** arguments) {
    if (count < 3) {
        std::cerr << "usage: take_shots TABLES READY [large]\n";
        return 64;
    }
    Camera camera(arguments[1], arguments[2], count > 3);
    TakeAll(camera);
    return camera.hasFailed() ? 1 : 0;
}
