#include "tool/check/finding_at.h"

#include <utility>

namespace tool {

Finding FindingAt(const SourceTree& tree, std::size_t visit, const NodeUse& use, const Rule& rule,
                  Wording wording)
{
    Finding finding;
    finding.rule = &rule;
    finding.position = tree.PositionOf(visit, use);
    finding.length = LengthOf(tree.FileOf(visit), use);
    finding.visit = visit;
    finding.message = std::move(wording.message);
    finding.effect = std::move(wording.effect);
    finding.help = std::move(wording.help);
    return finding;
}

} // namespace tool
