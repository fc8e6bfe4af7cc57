import Orvel.App

// One favourite radio.
RadioRow {
    required property CellCustomRadio2 cell

    radio: cell
}
