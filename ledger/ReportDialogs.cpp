#include "ledger/ReportDialogs.h"

#include "ledger/CodeLookups.h"

namespace kv {
namespace {

using Kind = SelectPart::Kind;

SelectShape periodsShape(const char* caption, StatementEntity entity) {
    SelectShape shape{"frmRepPrd", caption, {}};
    if (entity != StatementEntity::None) {
        shape.parts.push_back({Kind::Code, "txtEntity", entityCaption(entity), "cmdEntity", "lblEntity", true});
    }
    shape.parts.push_back({Kind::Month, "dtpStart", "&Start :"});
    shape.parts.push_back({Kind::Month, "dtpEnd", "&End :"});
    return shape;
}

}  // namespace

CodeLookup entityLookup(Session& session, StatementEntity entity) {
    switch (entity) {
        case StatementEntity::Account:
            return AccountLookup(session);
        case StatementEntity::Department:
            return CostCenterLookup(session);
        case StatementEntity::Division:
            return DivisionLookup(session);
        case StatementEntity::Group:
            return GroupLookup(session);
        case StatementEntity::None:
            break;
    }
    return {};
}

const char* entityCaption(StatementEntity entity) {
    switch (entity) {
        case StatementEntity::Account:
            return "&Account :";
        case StatementEntity::Department:
            return "&Department :";
        case StatementEntity::Division:
            return "&Division :";
        case StatementEntity::Group:
            return "Schedule &Group :";
        case StatementEntity::None:
            break;
    }
    return nullptr;
}

frmRepPrd::frmRepPrd(Session& session, const char* caption, StatementEntity entity)
    : SelectDialog(periodsShape(caption, entity)), hasEntity_(entity != StatementEntity::None) {
    if (hasEntity_) setLookup(0, entityLookup(session, entity));
}

bool frmRepPrd::ShowDialog(std::string& Entity, std::string& Period1, std::string& Period2) {
    return hasEntity_ ? ask({&Entity, &Period1, &Period2}) : ask({&Period1, &Period2});
}

frmRepDate::frmRepDate(const char* caption)
    : SelectDialog({"frmRepDate",
                    caption,
                    {{Kind::Day, "dtpStartDate", "&Start Date :"}, {Kind::Day, "dtpEndDate", "&End Date :"}}}) {}

}  // namespace kv
