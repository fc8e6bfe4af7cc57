#include "demo/app/TourSteps.h"

#include "demo/app/Visitor.h"
#include "platform/ui/containers/ProgressHud.h"

namespace orvel {

namespace {

using Act = std::function<bool(Visitor &)>;

// How long screens take to slide in, and pictures to load.
constexpr double aMoment = 1;
constexpr double noTime = 0;
// How long the demo station plays one, so that the next has begun.
constexpr double aSong = 20;

Act touch(const char *text)
{
    return [text = QString::fromUtf8(text)](Visitor &visitor) { return visitor.touch(text); };
}

Act type(const char *text)
{
    return [text = QString::fromUtf8(text)](Visitor &visitor) {
        visitor.type(text);
        return true;
    };
}

Act press(Qt::Key key)
{
    return [key](Visitor &visitor) {
        visitor.press(key);
        return true;
    };
}

Act scroll(double share)
{
    return [share](Visitor &visitor) {
        visitor.scroll(share);
        return true;
    };
}

Act resize(int width, int height)
{
    return [width, height](Visitor &visitor) {
        visitor.resize(width, height);
        return true;
    };
}

const Act aPhone = resize(375, 667);

bool waitForOverlay(Visitor &) { return ProgressHud::shared().isVisible(); }

bool doNothing(Visitor &) { return true; }

void add(std::vector<TourStep> &steps, std::vector<TourStep> more)
{
    steps.insert(steps.end(), std::make_move_iterator(more.begin()), std::make_move_iterator(more.end()));
}

std::vector<TourStep> radios()
{
    return {
        {aPhone, {}, noTime, {}},
        {waitForOverlay, {}, 0.3, "overlay"},
        // Long enough for every radio in sight to have been asked for its title.
        {doNothing, "Orvel La Radio", 3, "radios"},
        {touch("Orvel La Radio"), "Pause", 2.5, "playing"},
        {touch("Partager sur Facebook"), "Continuer sur Facebook", aMoment, "share-facebook"},
        {touch("Annuler"), "Menu", noTime, {}},
        {touch("Partager sur Twitter"), "Continuer sur Twitter", aMoment, "share-twitter"},
        {touch("Annuler"), "Menu", noTime, {}},
        // Low enough for the header to scroll away.
        {resize(375, 540), {}, aMoment, {}},
        {scroll(1), {}, aMoment, {}}, // the bar has come, and the list's end stands higher
        {scroll(1), {}, 2, "compact-bar"},
        {aPhone, {}, aMoment, {}},
        {scroll(0), {}, noTime, {}},
    };
}

std::vector<TourStep> menu()
{
    return {
        {touch("Menu"), "News", aMoment, "menu"},
        {touch("News"), "Cette rubrique n'est pas encore disponible.", aMoment, "alert"},
        {press(Qt::Key_Escape), {}, noTime, {}},
        {scroll(1), "Mon compte", aMoment, "menu-end"},
    };
}

std::vector<TourStep> account()
{
    return {
        {touch("Mon compte"), "Se connecter", aMoment, "login"},
        {touch("vous@exemple.fr"), {}, noTime, {}},
        {type("camille@example.org"), {}, noTime, {}},
        {press(Qt::Key_Tab), {}, noTime, {}},
        {type("musiqu"), {}, noTime, {}},
        {touch("Se souvenir de moi"), {}, aMoment, "login-filled"},
        {touch("Se connecter"), "Adresse e-mail ou mot de passe incorrect.", aMoment, "login-refused"},
        {press(Qt::Key_Escape), {}, noTime, {}},
        {touch("Créer un compte"), "Créer mon compte", aMoment, "register"},
        {touch("Retour"), "Se connecter", noTime, {}},
        {touch("musiqu"), {}, noTime, {}},
        {press(Qt::Key_End), {}, noTime, {}},
        {type("e"), {}, noTime, {}},
        {touch("Se connecter"), "User successfully Login.", aMoment, {}},
        {press(Qt::Key_Escape), {}, noTime, {}},
        {touch("Inscrivez-vous à la Newsletter"), "S'inscrire", aMoment, "newsletter"},
        {touch("Fermer"), {}, noTime, {}},
    };
}

// The composers, or the alert of a system without a program that takes what they send.
std::vector<TourStep> frequencies()
{
    return {
        {touch("Fréquences"), "Aix-en-Provence", 2, "frequencies"},
        {touch("Contacter la station"), "Please Select Options", aMoment, "contact"},
        {touch("SMS"), {}, aMoment, "sms"},
        {press(Qt::Key_Escape), {}, noTime, {}},
        {touch("Contacter la station"), "Please Select Options", noTime, {}},
        {touch("Mail"), {}, aMoment, "mail"},
        {press(Qt::Key_Escape), {}, 0.5, {}},
        {press(Qt::Key_Escape), {}, noTime, {}}, // the alert that tells of the mail
    };
}

std::vector<TourStep> favourites()
{
    return {
        {touch("Menu"), {}, aMoment, {}},
        {scroll(0), {}, noTime, {}},
        {touch("Favoris"), "Pas encore de favoris", aMoment, "favourites-empty"},
        {touch("Menu"), {}, noTime, {}},
        {touch("Radios"), "Orvel La Radio", aMoment, {}},
        {touch("Ajouter aux favoris : Orvel La Radio"), {}, noTime, {}},
        {scroll(0.5), {}, noTime, {}},
        {touch("Ajouter aux favoris : Orvel Jazz & Soul"), {}, noTime, {}},
        {touch("Ajouter aux favoris : Orvel Été 😎"), {}, noTime, {}},
        {scroll(1), {}, noTime, {}},
        {touch("Ajouter aux favoris : Orvel Classique"), {}, noTime, {}},
        {touch("Menu"), {}, noTime, {}},
        {touch("Favoris"), "Orvel Classique", 2, "favourites"},
        {touch("Retirer des favoris : Orvel Classique"), "Are you sure, you want to unfavourite?", aMoment,
         "unfavourite"},
        {touch("Cancel"), {}, noTime, {}},
    };
}

// What a desktop and a phone on its side show.
std::vector<TourStep> wide()
{
    return {
        {touch("Menu"), {}, noTime, {}},
        {touch("Radios"), "Orvel La Radio", noTime, {}},
        {resize(1024, 720), "Orvel La Radio", aSong, "wide-radios"},
        {touch("Menu"), {}, aMoment, "wide-menu"},
        {scroll(1), {}, noTime, {}},
        {touch("Mon compte"), "Se connecter", aMoment, "wide-login"},
        {press(Qt::Key_Escape), {}, noTime, {}},
    };
}

} // namespace

std::vector<TourStep> tourSteps()
{
    std::vector<TourStep> steps;
    for (const auto part : {radios, menu, account, frequencies, favourites, wide})
        add(steps, part());
    return steps;
}

} // namespace orvel
