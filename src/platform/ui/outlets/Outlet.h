#pragma once

// A place of a screen or cell that its layout draws: a value member, exposed to the layout as a constant
// pointer. Leaves the access at public.
#define OUTLET(Type, name)                                                                                   \
    Q_PROPERTY(orvel::Type *name READ name##Outlet CONSTANT)                                                 \
public:                                                                                                      \
    orvel::Type *name##Outlet() { return &name; }                                                            \
    orvel::Type name
