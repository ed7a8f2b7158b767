#ifndef AUTHINFOKEYS_H
#define AUTHINFOKEYS_H

// Information keys are a group, KEY_SEPARATOR and a name ("Product/HomePage").
extern const char* KEY_SEPARATOR;
extern const char* GROUP_AUTH;
extern const char* GROUP_PRODUCT;
extern const char* GROUP_SERVER;
extern const char* GROUP_SUPPORT;
extern const char* GROUP_PATENT;

#endif // AUTHINFOKEYS_H
