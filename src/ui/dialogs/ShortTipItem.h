// A part's line in a list, whose tooltip says why the part is short. The reason is worked out
// when the tooltip is asked for, from the job as it stands then.
#pragma once

#include <QListWidgetItem>
#include <cstdint>
#include <functional>
#include <string>

namespace kesto {

// Why part seq is short, in the message file's encoding; empty when it is not short.
using WhyShortFn = std::function<std::string(int32_t seq)>;

class ShortTipItem : public QListWidgetItem {
  public:
    ShortTipItem(const QString& text, int32_t seq, WhyShortFn why);
    QVariant data(int role) const override;

  private:
    int32_t seq_;
    WhyShortFn why_;
};

}  // namespace kesto
