// What the demo hospital charges and collects.

#include <algorithm>
#include <array>

#include "demo/year/DemoYear.h"

namespace kv {

namespace {

struct Earning {
    const char* code;
    const char* dept;
};

struct Ward {
    const char* room;
    const char* dept;
    const char* name;
};
const std::vector<Ward> kWards{
    {"4101", "3060", "PRIVATE ROOMS, SECOND FLOOR"},
    {"4101", "3070", "PRIVATE ROOMS, THIRD FLOOR"},
    {"4102", "3020", "MEDICAL WARD"},
    {"4102", "3030", "SURGICAL WARD"},
    {"4103", "3020", "MEDICAL WARD"},
    {"4103", "3040", "PEDIATRIC WARD"},
    {"4103", "3050", "OBSTETRIC WARD"},
    {"4104", "3080", "INTENSIVE CARE UNIT"},
    {"4105", "3090", "NEONATAL INTENSIVE CARE UNIT"},
    {"4106", "3100", "NURSERY"},
};

std::string dayText(const Date& day) { return Format(day, "MM/dd/yyyy"); }

/// The amount to one account, against earnings in parts by weight.
std::vector<DemoLine> earned(const char* receivable, Centavos amount, const std::vector<Earning>& earnings,
                             const std::vector<int>& weights, Dice& dice) {
    std::vector<DemoLine> lines{{receivable, "", amount}};
    const std::vector<Centavos> parts = splitAmount(amount, weights, dice);
    for (std::size_t i = 0; i < earnings.size(); ++i) lines.push_back({earnings[i].code, earnings[i].dept, -parts[i]});
    return lines;
}

}  // namespace

void DemoYear::wardCharges(const Date& day, Centavos amount) {
    const Ward& ward = dice_.oneOf(kWards);
    const std::vector<Earning> earnings{{"4301", "1110"}, {ward.room, ward.dept}, {"4201", "1010"},
                                        {"4303", "1120"}, {"4203", "1030"},       {"4304", "1120"}};
    books_.journal("AR", day, std::string("CHARGES OF ") + ward.name + ", " + dayText(day),
                   earned("1201", amount, earnings, {31, 30, 15, 10, 8, 6}, dice_));
}

void DemoYear::surgeryCharges(const Date& day, Centavos amount) {
    const bool delivery = dice_.below(4) == 0;
    const Earning room = delivery ? Earning{"4212", "1140"} : Earning{"4211", "1130"};
    books_.journal(
        "AR", day, std::string(delivery ? "DELIVERY ROOM" : "OPERATING ROOM") + " CHARGES, " + dayText(day),
        earned("1201", amount, {room, {"4301", "1110"}, {"4303", "1120"}, {"4304", "1120"}, {"4202", "1020"}},
               {45, 22, 20, 8, 5}, dice_));
}

void DemoYear::emergencyCharges(const Date& day, Centavos amount) {
    books_.journal("AR", day, "EMERGENCY ROOM CHARGES, " + dayText(day),
                   earned("1201", amount, {{"4213", "1150"}, {"4201", "1010"}, {"4301", "1110"}, {"4203", "1030"}},
                          {38, 24, 24, 14}, dice_));
}

void DemoYear::outpatientCharges(const Date& day, Centavos amount) {
    books_.journal("AR", day, "OUTPATIENT CHARGES, " + dayText(day),
                   earned("1203", amount,
                          {{"4302", "1110"},
                           {"4201", "1010"},
                           {"4214", "1160"},
                           {"4203", "1030"},
                           {"4204", "1040"},
                           {"4206", "1060"}},
                          {30, 24, 16, 12, 10, 8}, dice_));
}

void DemoYear::diagnosticCharges(const Date& day, Centavos amount) {
    books_.journal("AR", day, "DIAGNOSTIC AND THERAPY CHARGES, " + dayText(day),
                   earned("1203", amount, {{"4205", "1050"}, {"4210", "1100"}, {"4208", "1080"}, {"4207", "1070"}},
                          {46, 22, 18, 14}, dice_));
}

void DemoYear::dialysisCharges(const Date& day, Centavos amount) {
    books_.journal("AR", day, "DIALYSIS SESSIONS UNDER PHILHEALTH, " + dayText(day),
                   earned("1206", amount, {{"4209", "1090"}, {"4303", "1120"}}, {80, 20}, dice_));
}

void DemoYear::doctorsFees(const Date& day, Centavos amount) {
    const Centavos shared = permille(amount, dice_.between(240, 320));
    books_.journal(
        "AR", day, "PROFESSIONAL FEES BILLED TO PATIENTS, " + dayText(day),
        {{"1201", "", amount - shared}, {"1207", "", shared}, {"2201", "", shared - amount}, {"2202", "", -shared}});
}

void DemoYear::discharges(const Date& day, Centavos) {
    const Centavos bills = settle("1201", day, 5);
    const Centavos deposits = std::min(settle("2106", day, 6), permille(bills, 80));
    const std::vector<Centavos> parts = splitAmount(bills - deposits, {310, 260, 245, 60, 30, 60, 10, 20, 5}, dice_);
    const char* dept = dice_.oneOf(kWards).dept;
    books_.journal("AR", day, "DISCHARGES OF THE DAY, " + dayText(day),
                   {{"1205", "", parts[0]},
                    {"1202", "", parts[1]},
                    {"1206", "", parts[2]},
                    {"1208", "", parts[3]},
                    {"1209", "", parts[4]},
                    {"5101", dept, parts[5]},
                    {"5102", dept, parts[6]},
                    {"5105", "2050", parts[7]},
                    {"5106", "2190", parts[8]},
                    {"2106", "", deposits},
                    {"1201", "", -bills}});
}

void DemoYear::outpatientCollections(const Date& day, Centavos) {
    const Centavos paid = settle("1203", day, 2);
    const Centavos cards = permille(paid, dice_.between(220, 380));
    books_.journal("CR", day, "CASHIER COLLECTIONS, OUTPATIENTS, " + dayText(day),
                   {{"1101", "", paid - cards}, {"1118", "", cards}, {"1203", "", -paid}});
}

void DemoYear::dischargedCollections(const Date& day, Centavos) {
    const Centavos paid = settle("1202", day, 14);
    const Centavos deposits = permille(paid, dice_.between(120, 260));
    const Centavos cards = permille(paid, dice_.between(300, 450));
    books_.journal(
        "CR", day, "COLLECTIONS OF PATIENTS AND DEPOSITS, " + dayText(day),
        {{"1101", "", paid + deposits - cards}, {"1118", "", cards}, {"1202", "", -paid}, {"2106", "", -deposits}});
}

void DemoYear::hmoCollections(const Date& day, Centavos) {
    const Centavos billed = settle("1205", day, 42);
    const Centavos withheld = permille(billed, 20);
    const Centavos refused = permille(billed, dice_.between(5, 25));
    books_.journal("CR", day, "REMITTANCES OF HEALTH PLANS, " + dayText(day),
                   {{"1111", "", billed - withheld - refused},
                    {"1455", "", withheld},
                    {"5105", "2070", refused},
                    {"1205", "", -billed}});
}

void DemoYear::philhealthCollections(const Date& day, Centavos) {
    const Centavos claims = settle("1206", day, 60);
    const Centavos doctors = settle("1207", day, 60);
    books_.journal("CR", day, "PHILHEALTH CLAIMS PAID, " + dayText(day),
                   {{"1112", "", claims + doctors}, {"1206", "", -claims}, {"1207", "", -doctors}});
}

void DemoYear::companyCollections(const Date& day, Centavos) {
    const Centavos billed = settle("1208", day, 40);
    const Centavos assistance = settle("1209", day, 75);
    const Centavos withheld = permille(billed, 20);
    books_.journal("CR", day, "COLLECTIONS OF COMPANIES AND AGENCIES, " + dayText(day),
                   {{"1112", "", billed + assistance - withheld},
                    {"1455", "", withheld},
                    {"1208", "", -billed},
                    {"1209", "", -assistance}});
}

void DemoYear::bankDeposits(const Date& day, Centavos) {
    const Centavos fund = pesos(dice_.between(60'000, 140'000));
    const Centavos cash = std::max<Centavos>(books_.balance("1101") - fund, 0);
    const std::vector<Centavos> parts = splitAmount(cash, {60, 30, 10}, dice_);
    books_.journal("CR", day, "DEPOSIT OF COLLECTIONS, " + dayText(day),
                   {{"1111", "", parts[0]}, {"1112", "", parts[1]}, {"1115", "", parts[2]}, {"1101", "", -cash}});
}

void DemoYear::cardSettlement(const Date& day, Centavos) {
    const Centavos cards = settle("1118", day, 2);
    const Centavos commission = permille(cards, 22);
    books_.journal("CR", day, "CREDIT CARD SETTLEMENT, " + dayText(day),
                   {{"1111", "", cards - commission}, {"6803", "", commission}, {"1118", "", -cards}});
}

void DemoYear::rentals(const Date& day, Centavos amount) {
    const Centavos tax = amount * 12 / 112;
    books_.journal("CR", day, "CLINIC RENTALS AND OTHER INCOME, " + dayText(day),
                   {{"1101", "", amount},
                    {"2301", "", -tax},
                    {"4401", "2020", -permille(amount - tax, 850)},
                    {"4405", "2020", -(amount - tax - permille(amount - tax, 850))}});
}

void DemoYear::cafeteria(const Date& day, Centavos amount) {
    books_.journal("CR", day, "CAFETERIA SALES, " + dayText(day), {{"1101", "", amount}, {"4305", "2140", -amount}});
}

}  // namespace kv
