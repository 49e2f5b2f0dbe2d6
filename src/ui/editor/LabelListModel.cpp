#include "ui/editor/LabelListModel.h"

#include "kit/ShownText.h"

#include <algorithm>

namespace tessivo {

void LabelListModel::present(const std::vector<std::string>& labels) {
    std::vector<EditedLabel> wanted;
    wanted.reserve(labels.size());
    for (const std::string& label : labels) {
        wanted.push_back({0, toQString(label)});
    }
    const auto sameText = [](const EditedLabel& a, const EditedLabel& b) {
        return a.text == b.text;
    };
    const auto [oldStop, newStop] =
        std::mismatch(rows().begin(), rows().end(), wanted.begin(), wanted.end(), sameText);
    const auto [oldTail, newTail] =
        std::mismatch(rows().rbegin(), std::make_reverse_iterator(oldStop), wanted.rbegin(),
                      std::make_reverse_iterator(newStop), sameText);
    // From the front and then from the back, rows are who they were; what is between them was
    // edited in place as far as it goes, and the rest came or went.
    auto known = rows().begin();
    for (auto row = wanted.begin(); row != wanted.end(); ++row) {
        if (row == newTail.base()) {
            known = oldTail.base();
        }
        const bool isNew = row < newTail.base() && known == oldTail.base();
        row->row = isNew ? ++lastRow_ : (known++)->row;
    }
    setRows(std::move(wanted));
}

}  // namespace tessivo
