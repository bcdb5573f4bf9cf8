// A route planner over a small graph.
import Foundation

#if DEBUG
let verbose = true
#else
let verbose = false
#endif

/* Streets are /* one-way */ edges. */
struct Street: Hashable, Codable {
    let from: String
    let to: String
    var length: Double = 1.0
}

enum RouteError: Error {
    case unknownPlace(String)
    case noRoute(from: String, to: String)
}

protocol Planner {
    associatedtype Place: Hashable
    func route(from start: Place, to end: Place) throws -> [Place]
}

typealias Distance = Double

extension Street {
    static let none = Street(from: "", to: "", length: .infinity)
    var isLong: Bool { length > 1_000.5 }
}

@objc final class Map: NSObject, Planner {
    private var streets: [String: [Street]] = [:]
    @Published var count = 0x10
    weak var delegate: AnyObject?

    init(streets: [Street]) {
        for street in streets {
            self.streets[street.from, default: []].append(street)
        }
        super.init()
    }

    deinit { streets.removeAll() }

    func route(from start: String, to end: String) throws -> [String] {
        guard streets[start] != nil else { throw RouteError.unknownPlace(start) }
        var best: [String: (Distance, String?)] = [start: (0, nil)]
        var open: Set<String> = [start]
        while let place = open.min(by: { best[$0]!.0 < best[$1]!.0 }) {
            open.remove(place)
            if place == end { break }
            for street in streets[place] ?? [] {
                let distance = best[place]!.0 + street.length
                if distance < best[street.to]?.0 ?? .infinity {
                    best[street.to] = (distance, place)
                    open.insert(street.to)
                }
            }
        }
        return try collect(best, end: end)
    }

    private func collect(_ best: [String: (Distance, String?)], end: String) throws -> [String] {
        var places: [String] = []
        var current: String? = end
        repeat {
            guard let place = current, let entry = best[place] else {
                throw RouteError.noRoute(from: "?", to: end)
            }
            places.insert(place, at: 0)
            current = entry.1
        } while current != nil
        return places
    }
}

actor Counter {
    private(set) var value = 0
    func add(_ n: Int = 1) -> Int { value += n; return value &+ 1 }
}

func describe<T>(_ value: T, _ rest: T...) -> String where T: CustomStringConvertible {
    let raw = #"a "quoted" \word"#
    let text = """
        Places: \(value.description)
        "quoted" and \"escaped\"
        """
    let both = ##"one "# inside"##
    return raw + text + both
}

let map = Map(streets: [
    Street(from: "A", to: "B", length: 2.5e1),
    Street(from: "B", to: "C"),
])

do {
    let places = try map.route(from: "A", to: "C")
    for i in 0..<places.count where i % 2 == 0 && verbose {
        print("\(i): \(places[i])", terminator: "\n")
    }
    switch places.count {
    case 0...1: fallthrough
    default: print(Self.self, #file, #selector(getter: NSObject.description))
    }
} catch RouteError.unknownPlace(let place) {
    print("unknown: \(place)")
} catch {
    print(error.localizedDescription)
}
