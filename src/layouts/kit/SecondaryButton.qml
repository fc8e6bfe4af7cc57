import Orvel.Kit

// A form's other button, beside the one it leads to.
PrimaryButton {
    preferred: false
    ground: Theme.placeholder
}
