#pragma once

// Declares a place of a screen or cell that its layout draws: a value member, which the layout sees as a
// constant pointer. Leaves the access at public.
#define OUTLET(Type, name)                                                                                   \
    Q_PROPERTY(orvel::Type *name READ name##Outlet CONSTANT)                                                 \
public:                                                                                                      \
    orvel::Type *name##Outlet() { return &name; }                                                            \
    orvel::Type name
