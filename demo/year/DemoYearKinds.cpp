// The documents of the demo year: which kinds there are, how many of each, and what money they carry.

#include "demo/year/DemoYear.h"

namespace kv {

const std::vector<DemoYear::Daily>& DemoYear::dailyKinds() {
    static const std::vector<Daily> kinds{
        {"AR", 150, 300, &DemoYear::wardCharges},
        {"AR", 45, 130, &DemoYear::surgeryCharges},
        {"AR", 45, 70, &DemoYear::emergencyCharges},
        {"AR", 110, 180, &DemoYear::outpatientCharges},
        {"AR", 40, 90, &DemoYear::diagnosticCharges},
        {"AR", 30, 60, &DemoYear::dialysisCharges},
        {"AR", 30, 170, &DemoYear::doctorsFees},
        {"AR", 60, 0, &DemoYear::discharges},
        {"CR", 110, 0, &DemoYear::outpatientCollections},
        {"CR", 70, 0, &DemoYear::dischargedCollections},
        {"CR", 30, 0, &DemoYear::hmoCollections},
        {"CR", 20, 0, &DemoYear::philhealthCollections},
        {"CR", 12, 0, &DemoYear::companyCollections},
        {"CR", 45, 0, &DemoYear::bankDeposits},
        {"CR", 25, 0, &DemoYear::cardSettlement},
        {"CR", 10, 12, &DemoYear::rentals},
        {"CR", 15, 8, &DemoYear::cafeteria},
        {"AP", 75, 250, &DemoYear::goodsVoucher},
        {"AP", 30, 85, &DemoYear::servicesVoucher},
        {"AP", 18, 0, &DemoYear::doctorsVoucher},
        {"AP", 4, 22, &DemoYear::equipmentVoucher},
        {"CD", 78, 0, &DemoYear::payVouchers},
        {"CD", 10, 1, &DemoYear::pettyCash},
        {"JV", 45, 0, &DemoYear::inventoryIssues},
    };
    return kinds;
}

const std::vector<DemoYear::Monthly>& DemoYear::monthlyKinds() {
    static const std::vector<Monthly> kinds{
        {5, &DemoYear::oldPayables},    {10, &DemoYear::contributionChecks},
        {10, &DemoYear::taxChecks},     {14, &DemoYear::fundTransfers},
        {15, &DemoYear::payroll},       {15, &DemoYear::payrollChecks},
        {25, &DemoYear::loanChecks},    {-1, &DemoYear::fundTransfers},
        {0, &DemoYear::payroll},        {0, &DemoYear::contributions},
        {0, &DemoYear::payrollChecks},  {0, &DemoYear::depreciation},
        {0, &DemoYear::amortization},   {0, &DemoYear::provisions},
        {0, &DemoYear::bankEntries},    {0, &DemoYear::inputTax},
        {0, &DemoYear::yearEndEntries},
    };
    return kinds;
}

}  // namespace kv
