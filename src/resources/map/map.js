// The map page of the viewer. The application talks to it only by running short calls:
//   setLatLag(longitude, latitude)  mark a position (two decimal strings) and keep it in view
//   setRoute(points)                draw the recording's route: [[lat, lng], ...] or its JSON text
//   setOfflineText(text)            the wording of the offline label, in the user's language
//   KVRDebug(text)                  diagnostics; kept for kvrMapState(), nothing is shown
// Tiles come from the URL template in the "tiles" query item, else from OpenStreetMap.
'use strict';

(function () {
    var OSM_TILES = 'https://tile.openstreetmap.org/{z}/{x}/{y}.png';
    var MAX_ZOOM = 19; // the tile server's limit
    var POSITION_ZOOM = 16; // street level, for the first position after a load
    var TILE_TIMEOUT_MS = 10000; // a batch with no tile by then counts as offline
    var DEBUG_LINES = 50;

    var tileUrl = new URLSearchParams(window.location.search).get('tiles') || OSM_TILES;

    var map = L.map('map', {
        center: [20, 0],
        zoom: 2,
        minZoom: 2,
        maxZoom: MAX_ZOOM,
        worldCopyJump: true,
    });
    map.createPane('position').style.zIndex = 650;

    // Only what the view needs: Leaflet's default keepBuffer, no prefetching beyond it.
    var tiles = L.tileLayer(tileUrl, {
        maxZoom: MAX_ZOOM,
        attribution: '&copy; <a href="https://www.openstreetmap.org/copyright">OpenStreetMap</a>' +
            ' contributors',
    }).addTo(map);

    L.control.scale({ position: 'bottomleft', maxWidth: 120 }).addTo(map);

    // The offline label sits above the scale and takes no clicks.
    var offlineLabel = null;
    var OfflineControl = L.Control.extend({
        options: { position: 'bottomleft' },
        onAdd: function () {
            offlineLabel = L.DomUtil.create('div', 'kvr-offline');
            offlineLabel.textContent = 'Map offline';
            offlineLabel.hidden = true;
            return offlineLabel;
        },
    });
    new OfflineControl().addTo(map);

    // Offline means a whole batch of tiles failed, or none arrived in time. One good tile
    // clears it, so a single missing tile on a working connection never shows the label.
    var batchLoaded = 0;
    var batchFailed = 0;
    var batchTimer = null;

    function setOffline(offline) {
        offlineLabel.hidden = !offline;
    }

    function stopBatchTimer() {
        if (batchTimer !== null) {
            clearTimeout(batchTimer);
            batchTimer = null;
        }
    }

    tiles.on('loading', function () {
        batchLoaded = 0;
        batchFailed = 0;
        stopBatchTimer();
        batchTimer = setTimeout(function () {
            batchTimer = null;
            if (batchLoaded === 0)
                setOffline(true);
        }, TILE_TIMEOUT_MS);
    });
    tiles.on('tileload', function () {
        ++batchLoaded;
        setOffline(false);
    });
    tiles.on('tileerror', function () {
        ++batchFailed;
    });
    tiles.on('load', function () {
        stopBatchTimer();
        if (batchLoaded === 0 && batchFailed > 0)
            setOffline(true);
    });
    window.addEventListener('online', function () {
        tiles.redraw();
    });

    var route = null; // the layers of the route
    var routeLine = null;
    var marker = null;
    var viewPlaced = false; // false until a route or a position has chosen the view
    var debugLines = [];

    function validLatLng(lat, lng) {
        return isFinite(lat) && isFinite(lng) && Math.abs(lat) <= 90 && Math.abs(lng) <= 180;
    }

    window.KVRDebug = function (text) {
        debugLines.push(String(text));
        if (debugLines.length > DEBUG_LINES)
            debugLines.shift();
    };

    window.setOfflineText = function (text) {
        offlineLabel.textContent = String(text);
    };

    window.setLatLag = function (a, b) {
        var lng = parseFloat(a);
        var lat = parseFloat(b);
        if (!validLatLng(lat, lng)) {
            window.KVRDebug('setLatLag ignored: ' + a + ', ' + b);
            return;
        }
        // The camera writes zeros until its receiver has a fix; that is no place to show.
        if (lat === 0 && lng === 0)
            return;
        var position = L.latLng(lat, lng);
        if (marker === null) {
            marker = L.circleMarker(position, {
                pane: 'position',
                radius: 8,
                color: '#ffffff',
                weight: 3,
                fillColor: '#e8453c',
                fillOpacity: 1,
                interactive: false,
            }).addTo(map);
        } else if (marker.getLatLng().equals(position)) {
            // The same record again: leave the view where the user may have moved it.
            return;
        } else {
            marker.setLatLng(position);
        }
        // Follow without touching the zoom: pan only once the marker nears the edge.
        if (!viewPlaced) {
            map.setView(position, POSITION_ZOOM, { animate: false });
            viewPlaced = true;
        } else if (!map.getBounds().pad(-0.15).contains(position)) {
            // A hidden page runs no animation frames; a pan there would wait until shown.
            map.panTo(position, { animate: !document.hidden, duration: 0.25 });
        }
    };

    window.clearPosition = function () {
        if (marker !== null) {
            map.removeLayer(marker);
            marker = null;
        }
    };

    // The usable points of a route, or null when points is no list at all.
    function routeLatLngs(points) {
        if (typeof points === 'string') {
            try {
                points = JSON.parse(points);
            } catch (e) {
                points = null;
            }
        }
        if (!Array.isArray(points))
            return null;
        var latlngs = [];
        for (var i = 0; i < points.length; ++i) {
            var p = points[i];
            if (!Array.isArray(p) || p.length < 2)
                continue;
            var lat = parseFloat(p[0]);
            var lng = parseFloat(p[1]);
            if (validLatLng(lat, lng) && !(lat === 0 && lng === 0))
                latlngs.push([lat, lng]);
        }
        return latlngs;
    }

    window.setRoute = function (points) {
        var latlngs = routeLatLngs(points);
        if (latlngs === null) {
            window.KVRDebug('setRoute ignored: not a list of points');
            return;
        }
        if (route !== null) {
            map.removeLayer(route);
            route = routeLine = null;
        }
        if (latlngs.length === 0)
            return;
        // A white casing keeps the line readable on busy tiles and on the plain background; the
        // open dot marks where the recording starts.
        routeLine = L.polyline(latlngs, {
            color: '#1a73e8',
            weight: 4,
            opacity: 0.95,
            interactive: false,
        });
        route = L.layerGroup([
            L.polyline(latlngs, { color: '#ffffff', weight: 8, opacity: 0.9, interactive: false }),
            routeLine,
            L.circleMarker(latlngs[0], {
                radius: 4,
                color: '#1a73e8',
                weight: 2,
                fillColor: '#ffffff',
                fillOpacity: 1,
                interactive: false,
            }),
        ]).addTo(map);
        map.fitBounds(routeLine.getBounds(), {
            padding: [28, 28],
            maxZoom: POSITION_ZOOM,
            animate: false,
        });
        viewPlaced = true;
    };

    // What the page shows, for diagnostics and tests.
    window.kvrMapState = function () {
        var center = map.getCenter();
        var position = marker === null ? null : marker.getLatLng();
        return {
            marker: position === null ? null : [position.lat, position.lng],
            route: routeLine === null ? 0 : routeLine.getLatLngs().length,
            offline: !offlineLabel.hidden,
            offlineText: offlineLabel.textContent,
            zoom: map.getZoom(),
            center: [center.lat, center.lng],
            debug: debugLines.slice(),
        };
    };
})();
