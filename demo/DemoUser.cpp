#include "demo/DemoUser.h"

const QList<DemoUser>& DemoUser::all() {
    static const QList<DemoUser> users{{"Amelia.Hart", 1},
                                       {"Tom.Becker", 2},
                                       {"Maeve.O'Connor", 2},
                                       {"Priya.Nair", 3},
                                       {"Siobhan.Kelly", 4, 1, {"Operations", "Warehouse", "", "", ""}},
                                       {"Jonas.Weber", 4, 2, {"Children's Services", "", "", "", ""}},
                                       {"Walter.Finch", 5}};
    return users;
}
